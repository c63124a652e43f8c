#include "orvane-streamer/Invitation.h"

#include "orvane-streamer/desk/TerminalQr.h"

namespace orv::apps {

std::string invitation(const std::vector<std::string> &addresses, bool isOpenToOthers, bool colours)
{
    std::string text = "Open this address in a browser to draw on this desktop:\n\n";
    text += "  " + addresses.front() + "\n\n" + terminalQr(addresses.front(), colours) + "\n";
    for (std::size_t i = 1; i < addresses.size(); ++i) {
        text += (i == 1 ? "Or:\n  " : "  ") + addresses[i] + "\n";
    }
    text +=
        isOpenToOthers
            ? "Other machines can reach this address. The pairing code in it keeps them out, but\n"
              "nothing is encrypted: whoever can read the network's traffic sees the screen and\n"
              "can take the remote over. Use it only in a network whose members you trust.\n"
            : "Only this machine can reach it. For a tablet in the same network, call\n"
              "orvane-streamer with --bind and an address of this machine, or 0.0.0.0.\n";
    return text + "Ctrl-C ends the streamer and saves what was drawn.\n";
}

} // namespace orv::apps
