#pragma once

namespace Tamber {

/// The one way in which the program lets time pass.
class EventDelivery {
  public:
    virtual ~EventDelivery() = default;

    /// Delivers the pending events (timer ticks, keys, painting, received bytes). Sleeps while
    /// there is none and returns as soon as there was one. No exception comes out of it.
    virtual void DeliverEvents() = 0;
};

/// Lets events run, again and again, until `done` says so.
template <typename Condition>
void DeliverEventsUntil(EventDelivery& events, Condition done) {
    while (!done())
        events.DeliverEvents();
}

}  // namespace Tamber
