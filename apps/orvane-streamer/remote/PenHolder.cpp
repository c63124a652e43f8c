#include "orvane-streamer/remote/PenHolder.h"

#include <algorithm>
#include <utility>

namespace orv::apps {

PenHolder::Step PenHolder::come(RemotePerson person)
{
    const ClientID id = person.id;
    people_.push_back(std::move(person));
    Step step = holder_ == 0 ? passTo(id) : Step();
    step.listChanged = true;
    return step;
}

PenHolder::Step PenHolder::leave(ClientID id)
{
    Step step;
    if (find(id) == nullptr) {
        return step;
    }
    std::erase_if(people_, [id](const RemotePerson &person) { return person.id == id; });
    asking_.erase(id);
    if (id == holder_) {
        step = passTo(0);
    }
    step.listChanged = true;
    return step;
}

PenHolder::Step PenHolder::ask(ClientID id)
{
    const RemotePerson *asker = find(id);
    if (asker == nullptr || id == holder_) {
        return {};
    }
    if (holder_ == 0) {
        return passTo(id);
    }
    Step step;
    if (asking_.insert(id).second) {
        step.askedHolder = holder_;
        step.asker = *asker;
    }
    return step;
}

PenHolder::Step PenHolder::give(ClientID by, ClientID to)
{
    const bool fits = by != 0 && by == holder_ && to != by && find(to) != nullptr;
    return fits ? passTo(to) : Step();
}

PenHolder::Step PenHolder::refuse(ClientID by, ClientID to)
{
    Step step;
    if (by == holder_ && asking_.erase(to) > 0) {
        step.refused = to;
    }
    return step;
}

PenHolder::Step PenHolder::drop(ClientID by)
{
    return by != 0 && by == holder_ ? passTo(0) : Step();
}

std::string PenHolder::holderName() const
{
    const RemotePerson *holder = find(holder_);
    return holder == nullptr ? std::string() : holder->name;
}

const RemotePerson *PenHolder::find(ClientID id) const
{
    const auto person = std::find_if(people_.begin(), people_.end(),
                                     [id](const RemotePerson &p) { return p.id == id; });
    return person == people_.end() ? nullptr : &*person;
}

PenHolder::Step PenHolder::passTo(ClientID id)
{
    holder_ = id;
    // They asked another one; whoever still wants it asks again.
    asking_.clear();
    Step step;
    step.listChanged = true;
    step.penPassed = true;
    return step;
}

} // namespace orv::apps
