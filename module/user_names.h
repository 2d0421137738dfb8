// The names of the user, for the conditions that ask for them.
#pragma once

#include <cstddef>

#include "outside/md_server.h"

// Takes over a text that came as a BSTR (may be null). One that doesn't fit into `cch` units with
// the terminator is dropped, never cut, and leaves the buffer as it was.
void TakeText(WCHAR* buffer, std::size_t cch, BSTR text);

// As the reading server tells it, in a buffer of kLabelLength units; without an answer the buffer
// stays as it was.
void ReadApplicationUserName(IQxLecternServer& server, WCHAR* name);
// As the system knows it, in a buffer of kLabelLength units; empty when it can't tell.
void ReadLoginUserName(WCHAR* name);
