// The folders that no search looks into: what was thrown away or replaced.
#pragma once

#include "criteria/text_equality.h"

inline bool IsUnsearchedFolder(WTextView name) {
    return TextsEqual(name, TEXT("Recycler"), kFoldName) ||
           TextsEqual(name, TEXT("OldVersions"), kFoldName);
}
