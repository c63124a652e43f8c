#pragma once

#include "BenchDesk.h"
#include "OrvAnnotation/AnnotationController.h"
#include "channels/OrvFrameworkLogger.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace orv::bench {

/// A client with a pen that reports as often as pens do, on a virtual display of 1920x1080: each of
/// its records goes through the controller's door.
class PenClient {
public:
    static constexpr double recordsASecond = 240.0;

    PenClient()
    {
        OrvFrameworkLogger::shared().setStandardOutput(false);
        controller_->SetClientCommandCHSender(ignoreRecord);
        controller_->SetActiveOpt(0, kPlugin);
        controller_->setM_dpID(1);
        controller_->setM_clientDimension({1920.0, 1080.0});
        send(kAnnotationMode, 0, {1});
        pass(1.0);
        send(kSetTool, kPen, {0, 0, 0, 0, 6, 0, 0xFF, 0xDC, 0, 0});
        pass(0.0);
    }
    ~PenClient()
    {
        controller_.reset();
        OrvFrameworkLogger::release();
    }
    PenClient(const PenClient &) = delete;
    PenClient &operator=(const PenClient &) = delete;

    /// A stroke of so many records, the press and the release among them. Each is drawn before the
    /// next one comes.
    void stroke(int records)
    {
        sendStroke(records, [this] { pass(1.0 / recordsASecond); });
    }
    /// The same in one burst, which takes no time and is drawn once.
    void strokeAtOnce(int records)
    {
        sendStroke(records, [] {});
        pass(0.0);
    }
    void pass(double seconds) { desk_.platform().mainThread().advance(seconds); }
    /// What the display shows.
    [[nodiscard]] platform::ImagePtr picture()
    {
        return desk_.platform().desktop().composePicture(1);
    }

private:
    using Ext = decltype(stCommand_mgs::ext);
    static constexpr std::uint16_t kPlugin = 17;
    static constexpr std::uint32_t kAnnotationMode = 0;
    static constexpr std::uint32_t kSetTool = 1;
    static constexpr std::uint32_t kMouse = 0xEFFD;
    static constexpr std::uint32_t kPen = 8;
    static constexpr std::uint32_t kPress = 5;
    static constexpr std::uint32_t kRelease = 6;
    static constexpr std::uint32_t kMove = 10;

    static int ignoreRecord(const void * /*bytes*/, std::size_t /*length*/, std::uint32_t /*id*/)
    {
        return 0;
    }
    /// Loops as of handwriting, five pixels a record, that drift over the whole display.
    void move()
    {
        ++moves_;
        const double time = moves_ / recordsASecond;
        x_ = 960.0 + 820.0 * std::sin(time * 0.37) + 60.0 * std::sin(time * 17.0);
        y_ = 560.0 + 400.0 * std::sin(time * 0.23) + 60.0 * std::cos(time * 19.0);
    }
    template <class Between> void sendStroke(int records, Between &&between)
    {
        for (int i = 1; i <= records; ++i) {
            report(i == 1 ? kPress : i == records ? kRelease : kMove);
            between();
        }
    }
    void report(std::uint32_t action)
    {
        if (action == kMove) {
            move();
        }
        const auto x = static_cast<std::uint32_t>(std::lround(x_));
        const auto y = static_cast<std::uint32_t>(std::lround(y_));
        send(kMouse, action,
             {0, 0, static_cast<std::uint8_t>(x >> 8U), static_cast<std::uint8_t>(x), 0, 0,
              static_cast<std::uint8_t>(y >> 8U), static_cast<std::uint8_t>(y)});
    }
    void send(std::uint32_t number, std::uint32_t argument, const Ext &ext)
    {
        stCommand_mgs record;
        record.pluginID = kPlugin;
        record.wparam = number;
        record.lparam = argument;
        record.ext = ext;
        controller_->CommandClient2App(record);
    }

    BenchDesk desk_;
    std::unique_ptr<AnnotationController> controller_ = std::make_unique<AnnotationController>();
    double x_ = 960.0;
    double y_ = 620.0;
    int moves_ = 0;
};

} // namespace orv::bench
