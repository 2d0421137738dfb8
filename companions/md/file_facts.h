// What the library keeps of a node's file once it has looked.
#pragma once

#include "outside/md_file_name_node.h"

struct MDxFileNameNode::Facts {
    bool rootClassKnown = false;
    GUID rootClass{};
};
