#pragma once

#include "CanvasDesk.h"
#include "annotations/FigureAnnotations.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orv::test {

/// A canvas whose data folders are those of a device named "Tablet", and its files.
class StorageDesk : public CanvasDesk {
protected:
    StorageDesk()
    {
        registerFigureAnnotations(AnnotationRegistry::shared());
        AppConstants &constants = AppConstants::instance();
        constants.APPName = "Orvane Whiteboard";
        constants.setDeviceName("Tablet");
        constants.DefaultAppDataPath = home.path() + "/.local/share/Orvane Whiteboard/";
        constants.AppDataPath = home.path() + "/Documents/Orvane Whiteboard/";
        desk.files().createFolder(constants.DefaultAppDataPath);
        canvas->loadDefaultAnnotationData();
        forget();
    }
    ~StorageDesk() override { OrvFrameworkLogger::release(); }

    /// A canvas as the next process would make it, with what the default file gives it.
    void restart()
    {
        makeCanvas();
        canvas->loadDefaultAnnotationData();
    }
    void makeCanvas()
    {
        window.reset();
        window = std::make_shared<AnnotationOverlayWindow>(0);
        canvas = std::make_shared<AnnotationsView>(window->frame());
        window->setAnnotationsView(canvas);
        window->setAnnotationManager(&session);
        window->setToolboxWindow(&toolbox);
        canvas->setCurrentTool(pen);
    }
    void forget()
    {
        systemLog.clear();
        session.calls.clear();
    }
    void use(std::int32_t type) { canvas->setCurrentTool(std::make_shared<FakeTool>(type)); }

    [[nodiscard]] static std::string defaultFile(const std::string &name = "save_iap.dat")
    {
        return AppConstants::instance().DefaultAppDataPath + name;
    }
    /// A path within the visible data folder, whose own folder is there afterwards.
    [[nodiscard]] std::string dataPath(const std::string &relative)
    {
        const std::string path = AppConstants::instance().AppDataPath + relative;
        desk.files().createFolder(path.substr(0, path.rfind('/')));
        return path;
    }
    /// A picture of one colour.
    std::string picture(const std::string &relative, std::uint32_t pixel = 0xFF00FF00U)
    {
        const std::string path = dataPath(relative);
        platform::Image image(1440, 900);
        std::fill_n(image.data(), 1440 * 900, pixel);
        EXPECT_TRUE(desk.pictures().save(path, image, platform::PictureKind::png, 1.0F));
        return path;
    }
    /// What the backdrop shows in the middle, as 0xAARRGGBB; 0 for none.
    [[nodiscard]] std::uint32_t backdropPixel() const
    {
        const platform::ImagePtr &pattern = window->backgroundPattern();
        return pattern ? pattern->pixel(pattern->width() / 2, pattern->height() / 2) : 0U;
    }
    void copyFixture(const std::string &name, const std::string &to) const
    {
        std::filesystem::copy_file(std::string(ORV_CANVAS_FIXTURES "/") + name, to,
                                   std::filesystem::copy_options::overwrite_existing);
    }
    [[nodiscard]] platform::Data bytesOf(const std::string &path)
    {
        return desk.files().read(path, 1ULL << 30U).value_or(platform::Data{});
    }
    /// The top-level keys of these that a file has, in this order.
    [[nodiscard]] std::vector<std::string> keysOf(const std::string &path)
    {
        platform::KeyedUnarchiver reader(bytesOf(path), AnnotationRegistry::shared().classes());
        std::vector<std::string> found;
        for (const char *key :
             {"annotationModeKey", "standardAnnotations", "standardClearedScreens",
              "standardUndoHistory", "flipchartAnnotations", "flipchartClearedScreens",
              "flipchartUndoHistory", "annotationBackdrop", "flipchartImageFilePath",
              "backdropImageFilePath", "snapshotAnnotations", "snapshotClearedScreens",
              "snapshotUndoHistory", "snapshotImageFilePath", "isEditMode", "isChange"}) {
            if (reader.containsValueForKey(key)) {
                found.emplace_back(key);
            }
        }
        return found;
    }
    [[nodiscard]] std::string stringIn(const std::string &path, const char *key)
    {
        platform::KeyedUnarchiver reader(bytesOf(path), AnnotationRegistry::shared().classes());
        return reader.decodeString(key).value_or("(none)");
    }
    [[nodiscard]] std::int64_t numberIn(const std::string &path, const char *key)
    {
        platform::KeyedUnarchiver reader(bytesOf(path), AnnotationRegistry::shared().classes());
        return reader.decodeInt(key);
    }
    /// "drawn wiped undone" of a mode; "none" for a mode without lists.
    [[nodiscard]] std::string counts(const std::string &modeKey) const
    {
        const CanvasDocument &document = canvas->document();
        if (!document.annotations(modeKey)) {
            return "none";
        }
        return fmt::format("{} {} {}", document.annotationCount(modeKey),
                           document.clearedScreenCount(modeKey),
                           document.undoHistoryCount(modeKey));
    }
    /// One drawn, one wiped screen, one undone.
    void drawALittle()
    {
        stroke({10.0, 10.0}, {20.0, 20.0});
        canvas->clearAnnotations(nullptr);
        stroke({30.0, 30.0}, {40.0, 40.0});
        stroke({50.0, 50.0}, {60.0, 60.0});
        canvas->undoAnnotation();
    }
    [[nodiscard]] std::vector<std::string> filesIn(const std::string &folder) const
    {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    static constexpr const char *standard = AnnotationsView::annotationModeKeyStandard;
    static constexpr const char *snapshot = AnnotationsView::annotationModeKeySnapshot;
    static constexpr const char *flipchart = AnnotationsView::annotationModeKeyFlipchart;
};

} // namespace orv::test
