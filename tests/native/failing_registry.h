// Changes of the registry that fail on demand, for programs that link failing_registry.cpp: its
// calls stand in front of those of the library.
#pragma once

enum class eRegistryFault { Once, FromThenOn };

// The change with this number fails, counted from 0 and from now on; so do those behind it, if
// asked. A deletion that fails has got a part of the way.
void FailRegistryChange(int number, eRegistryFault fault);
// No change fails any more; whether one did.
bool EndRegistryFaults();
