#include "orv-pictures/Options.h"

#include "orv-pictures/PictureError.h"

#include <string_view>

namespace orv::pictures {

Options readOptions(std::span<char *const> arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help") {
            options.help = true;
            return options;
        }
        if (argument != "--templates" && argument != "--out") {
            throw PictureError("There is no option \"" + std::string(argument) + "\".");
        }
        if (++i == arguments.size() || *arguments[i] == '\0') {
            throw PictureError(std::string(argument) + " needs the path of a folder after it.");
        }
        (argument == "--out" ? options.out : options.templates) = arguments[i];
    }
    if (options.templates.empty()) {
        throw PictureError("--templates is missing: the folder of the templates.");
    }
    if (options.out.empty()) {
        throw PictureError("--out is missing: the folder that the pictures go to.");
    }
    return options;
}

const char *helpText()
{
    return "usage: orv-pictures --templates DIR --out DIR\n"
           "\n"
           "Draws every picture that families.json in the folder of templates describes, as "
           "NAME.png\n"
           "and NAME@2x.png or as NAME.icns, and contact-sheet.png with all of them for a look.\n"
           "A file that is there already with the same bytes is left alone.\n"
           "\n"
           "Ends with 2, and writes no picture, when anything given to it does not fit.\n";
}

} // namespace orv::pictures
