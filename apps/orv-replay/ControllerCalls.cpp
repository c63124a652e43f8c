#include "orv-replay/ControllerCalls.h"

#include "common/Arguments.h"
#include "common/ScriptError.h"
#include "orv-replay/ReplaySession.h"
#include "platform/ports/Files.h"

#include <fmt/format.h>

#include <map>
#include <string>

namespace orv::apps {

namespace {

/// The arguments of one call, by place.
class CallArguments {
public:
    CallArguments(std::string operation, const Json &list)
        : operation_(std::move(operation)), list_(list)
    {
    }

    [[nodiscard]] std::size_t count() const { return list_.size(); }
    void expect(std::size_t count) const
    {
        if (list_.size() != count) {
            throw ScriptError(fmt::format("\"{}\" takes {} argument{}, not {}", operation_, count,
                                          count == 1 ? "" : "s", list_.size()));
        }
    }
    [[nodiscard]] std::uint32_t word(std::size_t at) const
    {
        return asWord(list_.at(at), name(at));
    }
    [[nodiscard]] bool flag(std::size_t at) const { return asBool(list_.at(at), name(at)); }
    [[nodiscard]] std::string text(std::size_t at) const { return asText(list_.at(at), name(at)); }
    /// [w, h] as one argument, or as two.
    [[nodiscard]] ScreenDimension size() const
    {
        if (count() == 2) {
            return screenDimension(list_, operation_);
        }
        expect(1);
        return screenDimension(list_.at(0), name(0));
    }
    /// Nothing for null.
    [[nodiscard]] std::optional<std::map<std::string, std::string>> dictionary(std::size_t at) const
    {
        return list_.at(at).is_null() ? std::nullopt
                                      : std::optional(textDictionary(list_.at(at), name(at)));
    }

private:
    [[nodiscard]] std::string name(std::size_t at) const
    {
        return fmt::format("{} argument {}", operation_, at + 1);
    }

    std::string operation_;
    const Json &list_;
};

using Call = void (*)(ReplayHost &host, AnnotationController &controller,
                      const CallArguments &arguments);

void callSetDebugDict(AnnotationController &controller, const CallArguments &arguments)
{
    arguments.expect(1);
    const auto dictionary = arguments.dictionary(0);
    controller.setDebugDict(dictionary ? &*dictionary : nullptr);
}

void callSendFile(const ReplayHost &host, AnnotationController &controller,
                  const CallArguments &arguments)
{
    arguments.expect(2);
    const std::string folder = arguments.text(0);
    controller.SendFileToClient(
        folder.starts_with('/') ? folder : platform::joinPath(host.folders().home, folder),
        arguments.text(1));
}

const std::map<std::string, Call, std::less<>> &calls()
{
    using Host = ReplayHost;
    using Controller = AnnotationController;
    using Arguments = CallArguments;
    static const std::map<std::string, Call, std::less<>> table{
        {"RecoveryDesktop",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(0);
             controller.RecoveryDesktop();
         }},
        {"Createkillmefile",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(0);
             controller.Createkillmefile();
         }},
        {"ToolChanged",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(0);
             controller.ToolChanged();
         }},
        {"setDeviceName",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(1);
             controller.setDeviceName(arguments.text(0));
         }},
        {"SetActiveOpt",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(2);
             controller.SetActiveOpt(arguments.word(0), arguments.word(1));
         }},
        {"setM_dpID",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(1);
             controller.setM_dpID(arguments.word(0));
         }},
        {"setM_clientDimension",
         [](Host &, Controller &controller, const Arguments &arguments) {
             controller.setM_clientDimension(arguments.size());
         }},
        {"setDebug",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(1);
             controller.setDebug(arguments.flag(0));
         }},
        {"setDebugDict",
         [](Host &, Controller &controller, const Arguments &arguments) {
             callSetDebugDict(controller, arguments);
         }},
        {"setIsIgnoreMouseEvent",
         [](Host &, Controller &controller, const Arguments &arguments) {
             arguments.expect(1);
             controller.setIsIgnoreMouseEvent(static_cast<std::int32_t>(arguments.word(0)));
         }},
        {"SendFileToClient",
         [](Host &host, Controller &controller, const Arguments &arguments) {
             callSendFile(host, controller, arguments);
         }},
        {"release",
         [](Host &host, Controller &, const Arguments &arguments) {
             arguments.expect(0);
             host.releaseController();
         }},
    };
    return table;
}

} // namespace

void runCall(ReplaySession &session, const Json &line)
{
    ReplayHost &host = session.host();
    const std::string operation = asText(line.at("call"), "call");
    const auto found = calls().find(operation);
    if (found == calls().end()) {
        throw ScriptError(fmt::format(R"("call": unknown operation "{}")", operation));
    }
    static const Json none = Json::array();
    const Json *list = member(line, "args");
    if (list != nullptr && !list->is_array()) {
        throw ScriptError("\"args\" is not a list");
    }
    if (AnnotationController *controller = host.controller()) {
        found->second(host, *controller, CallArguments(operation, list == nullptr ? none : *list));
    }
}

} // namespace orv::apps
