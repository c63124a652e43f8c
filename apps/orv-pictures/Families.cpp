#include "orv-pictures/Families.h"

#include "orv-pictures/PictureError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <initializer_list>
#include <set>
#include <string_view>

namespace orv::pictures {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kLargestSide = 4096;

[[noreturn]] void refuse(const std::string &where, const std::string &what)
{
    throw PictureError(where + ": " + what + ".");
}

std::string inQuotes(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

const Json &member(const Json &object, const char *key, Json::value_t type,
                   const std::string &where)
{
    const auto found = object.find(key);
    if (found == object.end() || found->type() != type) {
        refuse(where, inQuotes(key) + " is missing or of the wrong kind");
    }
    return *found;
}

std::string text(const Json &object, const char *key, const std::string &where)
{
    return member(object, key, Json::value_t::string, where).get<std::string>();
}

void checkKeys(const Json &object, std::initializer_list<std::string_view> keys,
               const std::string &where)
{
    for (const auto &item : object.items()) {
        if (std::find(keys.begin(), keys.end(), item.key()) == keys.end()) {
            refuse(where, inQuotes(item.key()) + " is not known");
        }
    }
}

/// Those of `object` replace what `values` has by the same name.
void addValues(const Json &object, std::initializer_list<std::string_view> others, Values &values,
               const std::string &where)
{
    if (!object.is_object()) {
        refuse(where, "the values are no object");
    }
    for (const auto &item : object.items()) {
        if (std::find(others.begin(), others.end(), item.key()) != others.end()) {
            continue;
        }
        if (!item.value().is_string() && !item.value().is_number()) {
            refuse(where, inQuotes(item.key()) + " is neither a text nor a number");
        }
        values[item.key()] =
            item.value().is_string() ? item.value().get<std::string>() : item.value().dump();
    }
}

/// A pattern in pieces: plain text, or the list whose entries go through that place.
struct Piece {
    std::string plain;
    const Json *list = nullptr;
    /// The ids that are kept; null for all.
    const Json *only = nullptr;
};

class Reader {
public:
    Reader(const Json &whole, const std::string &path)
        : path_(path), lists_(member(whole, "lists", Json::value_t::object, path)),
          frames_(member(whole, "frames", Json::value_t::object, path))
    {
    }

    Family family(const Json &description)
    {
        if (!description.is_object()) {
            refuse(path_, "a family is no object");
        }
        Family result;
        result.caption = text(description, "caption", path_);
        where_ = path_ + ": the family " + inQuotes(result.caption);
        checkKeys(description, {"caption", "pattern", "frame", "values", "only"}, where_);
        const Json &frame = this->frame(description);
        Picture first;
        first.templateName = text(frame, "template", where_);
        addValues(frame, {"template", "container"}, first.values, where_);
        if (const auto values = description.find("values"); values != description.end()) {
            addValues(*values, {}, first.values, where_);
        }
        result.container = container(frame);
        expand(pieces(description), 0, first, result);
        return result;
    }

private:
    const Json &frame(const Json &description) const
    {
        const std::string name = text(description, "frame", where_);
        return member(frames_, name.c_str(), Json::value_t::object, where_);
    }

    Container container(const Json &frame) const
    {
        if (!frame.contains("container")) {
            return Container::png;
        }
        const std::string name = text(frame, "container", where_);
        if (name != "png" && name != "icns") {
            refuse(where_, "the container " + inQuotes(name) + " is not known");
        }
        return name == "png" ? Container::png : Container::icns;
    }

    std::vector<Piece> pieces(const Json &description) const
    {
        const std::string pattern = text(description, "pattern", where_);
        std::vector<Piece> result;
        std::size_t at = 0;
        for (auto open = pattern.find('{'); open != std::string::npos;
             open = pattern.find('{', at)) {
            const auto close = pattern.find('}', open);
            if (close == std::string::npos) {
                refuse(where_, "the pattern " + inQuotes(pattern) + " does not close a brace");
            }
            const std::string name = pattern.substr(open + 1, close - open - 1);
            result.push_back({pattern.substr(at, open - at),
                              &member(lists_, name.c_str(), Json::value_t::array, where_),
                              only(description, name)});
            at = close + 1;
        }
        result.push_back({pattern.substr(at)});
        return result;
    }

    const Json *only(const Json &description, const std::string &list) const
    {
        if (!description.contains("only")) {
            return nullptr;
        }
        const Json &kept = member(description, "only", Json::value_t::object, where_);
        return kept.contains(list) ? &member(kept, list.c_str(), Json::value_t::array, where_)
                                   : nullptr;
    }

    void expand(const std::vector<Piece> &pieces, std::size_t at, const Picture &begun,
                Family &family)
    {
        Picture picture = begun;
        picture.name += pieces[at].plain;
        if (pieces[at].list == nullptr) {
            finish(picture, family);
            return;
        }
        for (const Json &entry : *pieces[at].list) {
            if (!entry.is_object()) {
                refuse(where_, "an entry of a list is no object");
            }
            const std::string id = text(entry, "id", where_);
            const Json *kept = pieces[at].only;
            if (kept != nullptr && std::find(kept->begin(), kept->end(), id) == kept->end()) {
                continue;
            }
            Picture next = picture;
            next.name += id;
            addValues(entry, {"id"}, next.values, where_);
            expand(pieces, at + 1, next, family);
        }
    }

    void finish(Picture &picture, Family &family)
    {
        const bool plain =
            !picture.name.empty() &&
            std::all_of(picture.name.begin(), picture.name.end(), [](unsigned char c) {
                return std::isalnum(c) != 0 || c == '_' || c == '-';
            });
        if (!plain) {
            refuse(where_, inQuotes(picture.name) + " is no name for a picture");
        }
        if (!names_.insert(picture.name).second) {
            refuse(where_, inQuotes(picture.name) + " is there twice");
        }
        if (family.container == Container::png) {
            picture.width = side(picture, "width");
            picture.height = side(picture, "height");
        }
        family.pictures.push_back(picture);
    }

    int side(const Picture &picture, const char *key) const
    {
        const auto found = picture.values.find(key);
        const Json value =
            found == picture.values.end() ? Json() : Json::parse(found->second, nullptr, false);
        if (!value.is_number_unsigned() || value.get<std::uint64_t>() < 1 ||
            value.get<std::uint64_t>() > kLargestSide) {
            refuse(where_, "the " + std::string(key) + " of " + inQuotes(picture.name) +
                               " is no whole number of points from 1 to " +
                               std::to_string(kLargestSide));
        }
        return value.get<int>();
    }

    std::string path_;
    const Json &lists_;
    const Json &frames_;
    /// How messages begin.
    std::string where_;
    std::set<std::string> names_;
};

} // namespace

std::vector<Family> readFamilies(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        refuse(path, "the description of the families cannot be read");
    }
    const Json whole = Json::parse(file, nullptr, false);
    if (whole.is_discarded() || !whole.is_object()) {
        refuse(path, "the description of the families is no JSON object");
    }
    checkKeys(whole, {"lists", "frames", "families"}, path);
    Reader reader(whole, path);
    std::vector<Family> families;
    for (const Json &description : member(whole, "families", Json::value_t::array, path)) {
        families.push_back(reader.family(description));
    }
    return families;
}

} // namespace orv::pictures
