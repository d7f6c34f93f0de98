#include "platform/simulated/messages.h"

#include <utility>

namespace platform::simulated {

void Messages::post(std::function<void()> procedure) {
    Queue one;
    one.push_back(std::move(procedure));
    const SpinScope scope(_lock);
    _queue.splice(_queue.end(), one);
}

void Messages::postQuit() {
    post({});
}

void Messages::reset() {
    Queue gone;
    const SpinScope scope(_lock);
    gone.swap(_queue);
}

bool Messages::isWaiting() const noexcept {
    const SpinScope scope(_lock);
    return !_queue.empty();
}

Messages::Taken Messages::take(std::function<void()>& procedure) noexcept {
    Queue taken;
    const SpinScope scope(_lock);
    if (_queue.empty()) return Taken::Nothing;
    procedure = std::move(_queue.front());
    taken.splice(taken.end(), _queue, _queue.begin());
    return procedure ? Taken::Message : Taken::Quit;
}

}  // namespace platform::simulated
