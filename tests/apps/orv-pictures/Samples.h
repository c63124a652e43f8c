#pragma once

#include "support/VirtualDesk.h"

#include <QImage>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace orv::pictures::test {

inline std::string readAll(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A folder of templates of the test's own, with one family of two pictures, "red" and "blue".
class Samples {
public:
    Samples()
    {
        std::filesystem::create_directories(templates() + "/glyphs");
        write("tile.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 4 4\">"
                          "{{+glyph}}</svg>");
        write("glyphs/square.svg", "<rect width=\"2\" height=\"4\" fill=\"{{ink}}\"/>");
        write("families.json", R"({
            "lists": {"ink": [{"id": "red", "ink": "#FF0000"}, {"id": "blue", "ink": "#0000FF"}]},
            "frames": {"tile": {"template": "tile", "width": 4, "height": 4}},
            "families": [{"caption": "Squares", "pattern": "{ink}", "frame": "tile",
                          "values": {"glyph": "glyphs/square"}}]})");
    }

    [[nodiscard]] std::string templates() const { return folder_.path() + "/templates"; }
    [[nodiscard]] std::string out() const { return folder_.path() + "/out"; }
    [[nodiscard]] std::string path(const std::string &name) const
    {
        return templates() + "/" + name;
    }

    void write(const std::string &name, const std::string &text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    void replace(const std::string &name, const std::string &old, const std::string &now) const
    {
        std::string text = readAll(path(name));
        const auto at = text.find(old);
        ASSERT_NE(at, std::string::npos) << old;
        write(name, text.replace(at, old.size(), now));
    }

private:
    ::orv::test::TemporaryFolder folder_;
};

} // namespace orv::pictures::test
