#include "orv-pictures/ContactSheet.h"
#include "orv-pictures/Drawing.h"
#include "orv-pictures/Options.h"
#include "orv-pictures/OutputFolder.h"
#include "orv-pictures/PictureError.h"
#include "orv-pictures/Renderer.h"

#include <QGuiApplication>

#include <cstdlib>
#include <iostream>
#include <span>

namespace {

constexpr int kBadInput = 2;

QImage sheetOf(const std::vector<orv::pictures::Family> &families,
               const std::vector<std::vector<orv::pictures::Drawn>> &drawn)
{
    std::vector<orv::pictures::SheetGroup> groups;
    for (std::size_t i = 0; i < families.size(); ++i) {
        auto &group = groups.emplace_back();
        group.caption = QString::fromStdString(families[i].caption);
        for (const auto &picture : drawn[i]) {
            group.images.push_back(picture.image);
        }
    }
    return orv::pictures::contactSheet(groups);
}

void makePictures(const orv::pictures::Options &options)
{
    const auto families = orv::pictures::readFamilies(options.templates + "/families.json");
    const auto drawn =
        orv::pictures::drawAll(families, orv::pictures::TemplateText(options.templates));
    const QByteArray sheet = orv::pictures::pngOf(sheetOf(families, drawn));
    const orv::pictures::OutputFolder out(options.out);
    for (const auto &family : drawn) {
        for (const auto &picture : family) {
            for (const auto &file : picture.files) {
                out.write(file.name, file.bytes);
            }
        }
    }
    out.write("contact-sheet.png", sheet);
}

} // namespace

int main(int argc, char **argv)
{
    // There is no desktop here, and the toolkit's remarks on that are none of the reader's
    // business.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_LOGGING_RULES", "default.warning=false", 0);
    try {
        const auto options =
            orv::pictures::readOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
        if (options.help) {
            std::cout << orv::pictures::helpText();
            return 0;
        }
        const QGuiApplication application(argc, argv);
        makePictures(options);
        return 0;
    } catch (const std::exception &error) {
        std::cerr << "orv-pictures: " << error.what() << '\n';
        return kBadInput;
    }
}
