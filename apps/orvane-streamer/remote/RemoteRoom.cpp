#include "orvane-streamer/remote/RemoteRoom.h"

#include <fmt/format.h>

#include <cstring>
#include <utility>
#include <variant>
#include <vector>

namespace orv::apps {

namespace {

using Text = OutgoingQueue::Text;

std::vector<stCommand_mgs> recordsFrom(std::span<const std::uint8_t> bytes, std::uint16_t plugin)
{
    std::vector<stCommand_mgs> records;
    for (; !bytes.empty(); bytes = bytes.subspan(sizeof(stCommand_mgs))) {
        stCommand_mgs record;
        std::memcpy(&record, bytes.data(), sizeof record);
        if (record.pluginID == plugin || record.pluginID == 0) {
            records.push_back(record);
        }
    }
    return records;
}

} // namespace

RemoteRoom::RemoteRoom(Options options, RemoteHost &host, RecordFeed &feed)
    : options_(std::move(options)), host_(host), feed_(feed)
{
}

ClientID RemoteRoom::linkCame(std::shared_ptr<PageLink> link)
{
    const ClientID id = ++lastID_;
    clients_.emplace(
        id, Client{std::move(link), MessageRate(textsPerSecond, options_.clock()), "", false});
    return id;
}

void RemoteRoom::textCame(ClientID id, std::string_view text)
{
    Client *client = find(id);
    if (client == nullptr) {
        return;
    }
    if (!client->texts.admit(options_.clock())) {
        putOut(id, LinkEnd::againstPolicy, "sends too many messages and is put out");
        return;
    }
    if (text.size() > longestText) {
        putOut(id, LinkEnd::tooLarge, "sent a text that is too long and is put out");
        return;
    }
    const auto message = controlMessage(text);
    const bool isHello = message && std::holds_alternative<control::Hello>(*message);
    if (!message || isHello != client->name.empty()) {
        putOut(id, LinkEnd::badMessage, "sent a text that is no message here and is put out");
        return;
    }
    std::visit([&](const auto &known) { take(id, *client, known); }, *message);
}

void RemoteRoom::take(ClientID id, Client &client, const control::Hello &hello)
{
    client.name = hello.name;
    client.link->noteGreeting();
    options_.report(fmt::format("{} ({}) has come", client.name, client.link->peer()));
    client.link->sendText(Text::event, welcomeText(id, options_.plugin, options_.display));
    for (const stCommand_mgs &record : state_.all()) {
        client.link->sendRecord(record);
    }
    apply(pen_.come({id, client.name}));
    if (!isStopped_) {
        host_.clientCame(id);
    }
}

void RemoteRoom::take(ClientID id, Client & /*client*/, const control::Shown &shown)
{
    if (!isStopped_) {
        host_.pictureShown(id, shown.frame);
    }
}

void RemoteRoom::take(ClientID id, Client &client, const control::AskPen & /*ask*/)
{
    apply(pen_.ask(id));
    pauseWhileFull(client);
}

void RemoteRoom::take(ClientID id, Client &client, const control::GivePen &give)
{
    apply(pen_.give(id, give.to));
    pauseWhileFull(client);
}

void RemoteRoom::take(ClientID id, Client & /*client*/, const control::RefusePen &refuse)
{
    apply(pen_.refuse(id, refuse.to));
}

void RemoteRoom::take(ClientID id, Client &client, const control::DropPen & /*drop*/)
{
    apply(pen_.drop(id));
    pauseWhileFull(client);
}

void RemoteRoom::bytesCame(ClientID id, std::span<const std::uint8_t> bytes)
{
    Client *client = find(id);
    if (client == nullptr) {
        return;
    }
    if (client->name.empty() || bytes.empty() || bytes.size() % sizeof(stCommand_mgs) != 0) {
        putOut(id, LinkEnd::badMessage, "sent bytes that are no records and is put out");
        return;
    }
    if (id != pen_.holder() || isStopped_) {
        return;
    }
    const auto records = recordsFrom(bytes, options_.plugin);
    held_.follow(records);
    feed_.putRecords(records);
    pauseWhileFull(*client);
}

void RemoteRoom::linkLost(ClientID id, const std::string &how)
{
    if (find(id) != nullptr) {
        remove(id, how);
    }
}

void RemoteRoom::look()
{
    for (const auto &[id, client] : clients_) {
        client.link->look(options_.clock());
    }
}

void RemoteRoom::pauseWhileFull(Client &client)
{
    if (feed_.isFull()) {
        client.isPaused = true;
        client.link->pauseReading();
    }
}

void RemoteRoom::resumeReading()
{
    for (auto &[id, client] : clients_) {
        if (std::exchange(client.isPaused, false)) {
            client.link->resumeReading();
        }
    }
}

void RemoteRoom::stopReading()
{
    feed_.putRecords(held_.lift());
    isStopped_ = true;
}

void RemoteRoom::send(const stCommand_mgs &record)
{
    state_.note(record);
    for (const auto &[id, client] : clients_) {
        if (!client.name.empty()) {
            client.link->sendRecord(record);
        }
    }
}

void RemoteRoom::sendPackage(RemoteMessage package)
{
    if (const Client *holder = find(pen_.holder())) {
        holder->link->sendPackage(std::move(package));
    }
}

void RemoteRoom::sendPicture(ClientID id, RemoteMessage picture)
{
    if (const Client *client = find(id)) {
        client->link->sendPicture(std::move(picture));
    }
}

void RemoteRoom::setDisplay(const RemoteDisplay &display)
{
    options_.display = display;
    tellAll(Text::display, displayText(display));
}

void RemoteRoom::sayFarewell()
{
    for (const auto &[id, client] : clients_) {
        client.link->end(LinkEnd::goingAway);
    }
}

RemoteRoom::Client *RemoteRoom::find(ClientID id)
{
    const auto client = clients_.find(id);
    return client == clients_.end() ? nullptr : &client->second;
}

void RemoteRoom::apply(const PenHolder::Step &step)
{
    if (step.penPassed && !isStopped_) {
        feed_.putRecords(held_.lift());
        feed_.putPassing(pen_.holderName());
    }
    if (step.listChanged) {
        tellAll(Text::clients, clientsText(pen_));
    }
    if (const Client *holder = find(step.askedHolder)) {
        holder->link->sendText(Text::event, penAskedText(step.asker));
    }
    if (const Client *refused = find(step.refused)) {
        refused->link->sendText(Text::event, penRefusedText());
    }
}

void RemoteRoom::tellAll(Text kind, const std::string &text)
{
    for (const auto &[id, client] : clients_) {
        if (!client.name.empty()) {
            client.link->sendText(kind, text);
        }
    }
}

void RemoteRoom::putOut(ClientID id, LinkEnd why, const std::string &how)
{
    find(id)->link->end(why);
    remove(id, how);
}

void RemoteRoom::remove(ClientID id, const std::string &how)
{
    const Client gone = std::move(clients_.at(id));
    clients_.erase(id);
    if (gone.name.empty()) {
        options_.report(fmt::format("a browser at {} {}", gone.link->peer(), how));
        return;
    }
    options_.report(fmt::format("{} ({}) {}", gone.name, gone.link->peer(), how));
    apply(pen_.leave(id));
    if (!isStopped_) {
        host_.clientLeft(id);
    }
}

} // namespace orv::apps
