// What is left of windows, for tests that look for leaks.
#pragma once

// The windows of this thread that are alive, with their children, shown or not.
int CountLiveWindows();
