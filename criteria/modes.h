// Where the dialog was started and what it looks for.
#pragma once

enum eLookFor : unsigned {
    eLookForNone = 0,
    eLookForDocuments = 1,
    eLookForConstraints = 2,
    eLookForFasAssembly = 3,
    eLookForWelds = 4,
    eLookForFasSketch = 5,
    eLookForFasPart = 6,
    eLookForFiles = 7
};

enum eAccessPoint : unsigned {
    eAccessNone = 0,
    eAccessAssembly = 1,
    eAccessAssemblyAlt = 2,
    eAccessPart = 3,
    eAccessPartAlt = 4,
    eAccessFindFiles = 5,
    eAccessShellWindow = 6,
    eAccessShellNoWindow = 7
};
