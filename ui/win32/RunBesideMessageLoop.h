#pragma once
// Runs a piece of work on another thread while the calling (user interface) thread keeps the
// windows painting: what takes long no longer freezes them. Work that ends within a moment
// runs as if called directly; longer work shows the busy cursor, and the thread's windows
// are disabled and input is dropped until it has ended, so that nothing the work touches
// changes under it. poll runs on the calling thread now and then, and once at the end; what
// the work throws is thrown again here.

#include <functional>

void RunBesideMessageLoop(const std::function<void()>& work, const std::function<void()>& poll);
