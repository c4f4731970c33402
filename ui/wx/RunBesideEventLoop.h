#pragma once
// Runs a piece of work on another thread while the calling (user interface) thread keeps the
// windows painting: what takes long no longer freezes them. Work that ends within a moment
// runs as if called directly; longer work shows the busy cursor, and every window refuses
// input until it has ended, so that nothing the work touches changes under it.

#include <functional>

void RunBesideEventLoop(const std::function<void()>& work, const std::function<void()>& poll);
