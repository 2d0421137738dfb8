// Pairs of texts and what CompareStringW answers for 0x31001, 0x31000, 0x30001 and 0x20001, in that
// order (1 less, 2 equal, 3 greater). Recorded from Windows' side of the contract tests.
#pragma once

#include "tests/contract/contract.h"

struct ComparePair {
    const char* label;
    LPCWSTR a;
    LPCWSTR b;
    const char* results;
    eGap gap;
};

// clang-format off
inline const ComparePair kComparePairs[] = {
    {"file names", TEXT("Base_Plate_76.docx"), TEXT("Rail.72.txt"), "1111", eGap::none},
    {"file names", TEXT("HOUSING.txt"), TEXT("spindle.docx"), "1111", eGap::none},
    {"file names", TEXT("Base_Plate"), TEXT("Base_Pate"), "3333", eGap::none},
    {"file names", TEXT("Rail 96"), TEXT("rAIL 96"), "2322", eGap::none},
    {"file names", TEXT("spindle"), TEXT("SPINDLE"), "2122", eGap::none},
    {"hyphens and apostrophes", TEXT("co-op"), TEXT("co_op"), "1133", eGap::none},
    {"hyphens and apostrophes", TEXT("pre--post"), TEXT("re-sort"), "1111", eGap::none},
    {"hyphens and apostrophes", TEXT("rock'n'roll"), TEXT("rock'n'roll-"), "1111", eGap::none},
    {"hyphens and apostrophes", TEXT("pre--post"), TEXT("pre''post"), "3333", eGap::none},
    {"hyphens and apostrophes", TEXT("x-ray"), TEXT("x ray"), "1133", eGap::none},
    {"accents", TEXT("Gr\u00F6\u00DFe"), TEXT("Gro\u0308\u00DFe"), "2222", eGap::none},
    {"accents", TEXT("Gr\u00F6\u00DFe"), TEXT("gR\u00D6\u00DFE"), "2322", eGap::none},
    {"accents", TEXT("\u00D6lwanne"), TEXT("O\u0308lwanne"), "2222", eGap::none},
    {"accents", TEXT("\u00D6lwanne"), TEXT("\u00D6LWANNE"), "2122", eGap::none},
    {"Cyrillic and Greek", TEXT("\u0434\u0435\u0442\u0430\u043B\u044C"), TEXT("\u0414\u0415\u0422\u0410\u041B\u042C"), "2122", eGap::none},
    {"Cyrillic and Greek", TEXT("\u0431\u043E\u043B\u0442"), TEXT("\u0431\u043E\u043B\u0442\u0430"), "1111", eGap::none},
    {"Cyrillic and Greek", TEXT("\u0451\u043B\u043A\u0430"), TEXT("\u0435\u043B\u043A\u0430"), "3333", eGap::none},
    {"Cyrillic and Greek", TEXT("\u0419\u043E\u0434"), TEXT("\u0439\u043E\u0434"), "2322", eGap::none},
    {"full width", TEXT("\uFF22\uFF4F\uFF4C\uFF54"), TEXT("Bolt"), "2222", eGap::none},
    {"full width", TEXT("\uFF22\uFF4F\uFF4C\uFF54"), TEXT("bOLT"), "2322", eGap::none},
    {"full width", TEXT("\uFF2D\uFF18\u3000\uFF12\uFF10"), TEXT("M8 20"), "2222", eGap::none},
    {"half width", TEXT("\uFF76\uFF9E"), TEXT("\u30AC"), "2222", eGap::windows},
    {"half width", TEXT("\uFF9E\uFF67\uFFA1\uFFDC\uFFEE"), TEXT("\u3099\u30A1\u3131\u3163\u25CB"), "2222", eGap::none},
    {"full width", TEXT("\uFF2D\uFF18\uFF58\uFF12\uFF10"), TEXT("m8X20"), "2322", eGap::none},
    {"prefixes and blanks", TEXT(""), TEXT("a"), "1111", eGap::none},
    {"prefixes and blanks", TEXT(""), TEXT("-"), "1111", eGap::none},
    {"prefixes and blanks", TEXT("a"), TEXT("ab"), "1111", eGap::none},
    {"prefixes and blanks", TEXT("ab"), TEXT("a "), "3333", eGap::none},
    {"prefixes and blanks", TEXT("a b"), TEXT("ab"), "1111", eGap::none},
    {"signs", TEXT("\u00D820"), TEXT("\u00F820"), "2322", eGap::none},
    {"signs", TEXT("\u00D820"), TEXT("O20"), "3333", eGap::none},
    {"signs", TEXT("5\u00B0"), TEXT("5"), "3333", eGap::none},
    {"signs", TEXT("m\u00B2"), TEXT("m2"), "3333", eGap::none},
    {"signs", TEXT("m\u00B2"), TEXT("m\u00B3"), "1111", eGap::none},
    {"signs", TEXT("\u00B10.1"), TEXT("+0.1"), "3333", eGap::none},
    {"signs", TEXT("10\u00D720"), TEXT("10x20"), "1111", eGap::none},
    {"signs", TEXT("\u00B5m"), TEXT("um"), "1111", eGap::native},
    {"signs", TEXT("\u00B5m"), TEXT("\u03BCm"), "1111", eGap::native},
    {"signs", TEXT("\u00BD"), TEXT("1/2"), "1111", eGap::native},
    {"signs", TEXT("a\u2013b"), TEXT("a-b"), "3333", eGap::native},
    {"signs", TEXT("a\u2014b"), TEXT("ab"), "1133", eGap::native},
    {"signs", TEXT("a\u200Bb"), TEXT("ab"), "1111", eGap::native},
    {"signs", TEXT("\u2122"), TEXT("TM"), "3333", eGap::native},
    {"signs", TEXT("\u2163"), TEXT("IV"), "1111", eGap::native},
    {"East Asian", TEXT("\u90E8\u54C1"), TEXT("\u90E8\u6750"), "1111", eGap::none},
    {"East Asian", TEXT("\u65E5\u672C"), TEXT("\u65E5\u672C\u8A9E"), "1111", eGap::none},
    {"East Asian", TEXT("\u30CD\u30B8"), TEXT("\u306D\u3058"), "2221", eGap::none},
    {"East Asian", TEXT("\u306D\u3058"), TEXT("\u306D\u3057"), "3333", eGap::none},
    {"East Asian", TEXT("\u30AB\u30BF\u30AB\u30CA"), TEXT("\u30D2\u30E9\u30AC\u30CA"), "1111", eGap::none},
    {"East Asian", TEXT("\u3042"), TEXT("\u3041"), "3333", eGap::none},
    {"East Asian", TEXT("\u304C"), TEXT("\u304B\u3099"), "1111", eGap::native},
    {"East Asian", TEXT("\uD55C"), TEXT("\u1112\u1161\u11AB"), "3333", eGap::native},
    {"East Asian", TEXT("\u30A2\u30FC"), TEXT("\u30A2\u30A2"), "3333", eGap::native},
    {"other scripts", TEXT("a\U0001F600"), TEXT("a\U0001F601"), "1111", eGap::none},
    {"other scripts", TEXT("a\U0001F600"), TEXT("a"), "3333", eGap::none},
    {"other scripts", TEXT("\U00020000"), TEXT("\U00020001"), "1111", eGap::none},
    {"other scripts", TEXT("\u0431\u0301"), TEXT("\u0431"), "3333", eGap::none},
    {"other scripts", TEXT("\u05D0"), TEXT("\u05D1"), "1111", eGap::none},
    {"other scripts", TEXT("\u0627\u0644"), TEXT("\u0627"), "3333", eGap::none},
    {"other scripts", TEXT("\u0149"), TEXT("\u02BCn"), "3333", eGap::native},
    {"other scripts", TEXT("\u03C2"), TEXT("\u03C3"), "2322", eGap::native},
};
// clang-format on
