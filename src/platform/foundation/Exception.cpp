#include "platform/foundation/Exception.h"

#include <execinfo.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace orv::platform {

namespace {

constexpr int kMaxFrames = 32;

std::string currentCallStack()
{
    std::array<void *, kMaxFrames> frames{};
    const int count = ::backtrace(frames.data(), kMaxFrames);
    const std::unique_ptr<char *, decltype(&std::free)> symbols(
        ::backtrace_symbols(frames.data(), count), &std::free);
    std::string text;
    for (int i = 2; symbols && i < count; ++i) {
        text += symbols.get()[i];
        text += '\n';
    }
    return text;
}

} // namespace

Exception::Exception(const std::string &reason)
    : std::runtime_error(reason), callStack_(currentCallStack())
{
}

std::string Exception::description() const
{
    return std::string(what()) + "\n" + callStack_;
}

bool guarded(const std::function<void()> &body,
             const std::function<void(const std::string &)> &report) noexcept
{
    std::string description;
    try {
        body();
        return true;
    } catch (const Exception &exception) {
        description = exception.description();
    } catch (const std::exception &exception) {
        description = exception.what();
    } catch (...) {
        description = "an exception of an unknown type";
    }
    try {
        report(description);
    } catch (...) {
        // Who takes reports may be the host's; there is nobody left to tell.
        return false;
    }
    return false;
}

} // namespace orv::platform
