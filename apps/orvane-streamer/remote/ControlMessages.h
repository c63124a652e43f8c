#pragma once

#include "orvane-streamer/remote/PenHolder.h"
#include "orvane-streamer/remote/RemoteDisplay.h"
#include "orvane-streamer/remote/RemoteHost.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace orv::apps {

/// The text messages between page and server, both ways.
namespace control {

struct Hello {
    std::string name;
};
struct Shown {
    std::uint32_t frame = 0;
};
struct AskPen {};
struct GivePen {
    ClientID to = 0;
};
struct RefusePen {
    ClientID to = 0;
};
struct DropPen {};

} // namespace control

using ControlMessage = std::variant<control::Hello, control::Shown, control::AskPen,
                                    control::GivePen, control::RefusePen, control::DropPen>;

/// Nothing for a text that is not exactly one of the messages: with another key more, say, or with
/// a name of no or over 64 characters or that breaks lines.
[[nodiscard]] std::optional<ControlMessage> controlMessage(std::string_view text);

[[nodiscard]] std::string welcomeText(ClientID client, std::uint16_t plugin,
                                      const RemoteDisplay &display);
[[nodiscard]] std::string displayText(const RemoteDisplay &display);
[[nodiscard]] std::string clientsText(const PenHolder &people);
[[nodiscard]] std::string penAskedText(const RemotePerson &asker);
[[nodiscard]] std::string penRefusedText();

} // namespace orv::apps
