#include "ui/wx/RunBesideEventLoop.h"

#include <wx/app.h>
#include <wx/apptrait.h>
#include <wx/evtloop.h>
#include <wx/utils.h>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace {

// Shorter work ends before anyone could see the window freeze, and without flicker.
constexpr std::chrono::milliseconds kUnnoticed(150);
constexpr std::chrono::milliseconds kPollInterval(30);

// Painting and sizing only: input and timers wait until the work has ended. Work may run
// before any event loop does (a dialog being set up): then a loop of its own does this.
void LetTheWindowsPaint()
{
    if (wxEventLoopBase* active = wxEventLoopBase::GetActive()) {
        active->YieldFor(wxEVT_CATEGORY_UI);
        return;
    }
    if (!wxTheApp)
        return;
    std::unique_ptr<wxEventLoopBase> own(wxTheApp->GetTraits()->CreateEventLoop());
    wxEventLoopActivator activate(own.get());
    own->YieldFor(wxEVT_CATEGORY_UI);
}

} // namespace

void RunBesideEventLoop(const std::function<void()>& work, const std::function<void()>& poll)
{
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    std::exception_ptr failure;
    std::thread worker([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        std::lock_guard<std::mutex> lock(mutex);
        done = true;
        ended.notify_one();
    });
    std::unique_lock<std::mutex> lock(mutex);
    if (!ended.wait_for(lock, kUnnoticed, [&] { return done; })) {
        wxWindowDisabler noInput;
        wxBusyCursor busy;
        while (!done) {
            lock.unlock();
            poll();
            LetTheWindowsPaint();
            lock.lock();
            ended.wait_for(lock, kPollInterval, [&] { return done; });
        }
    }
    lock.unlock();
    worker.join();
    poll();
    if (failure)
        std::rethrow_exception(failure);
}
