#pragma once

#include <map>
#include <string>

namespace orv::pictures {

/// What stands for the placeholders of one picture, by name.
using Values = std::map<std::string, std::string>;

/// The vector templates of a folder and those below it, read once.
///
/// `{{name}}` in a template stands for the value of that name, `{{+name}}` for the template that
/// the value names, such as "glyphs/pen": the path within the folder without ".svg".
///
/// Thread   any, once it is made.
/// Fails    throws `PictureError`, which names the template.
class TemplateText {
public:
    explicit TemplateText(const std::string &folder);

    /// The path of a template, for a message.
    [[nodiscard]] std::string path(const std::string &name) const;
    /// The template with all placeholders filled in.
    [[nodiscard]] std::string filled(const std::string &name, const Values &values) const;

private:
    void append(const std::string &name, const Values &values, int depth, std::string &out) const;

    std::string folder_;
    std::map<std::string, std::string> texts_;
};

} // namespace orv::pictures
