#pragma once

#include "canvas/CanvasEffects.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orv::test {

/// Effects that note what they are asked for.
class NotedEffects : public CanvasEffects {
public:
    explicit NotedEffects(std::vector<std::string> &calls) : calls_(calls) {}
    void doSpotLight(bool on) override { note("spotlight", on); }
    void toggleSpotlight() override { calls_.emplace_back("toggle spotlight"); }
    void handleSpotlightPichAct(bool begin) override { note("pinch", begin); }
    void handleSpotlightPichMove(std::int32_t length) override
    {
        calls_.push_back("pinch by " + std::to_string(length));
    }
    void doScreenCover(bool on) override { note("cover", on); }
    void toggleScreenCover() override { calls_.emplace_back("toggle cover"); }
    void doLaserPointer(bool on) override
    {
        note("laser", on);
        laser_ = on;
    }
    [[nodiscard]] bool isLaserPointer() const override { return laser_; }
    void recoveryScreenShade() override { calls_.emplace_back("recovery"); }
    void fileTransferController(bool show) override { note("transfer", show); }
    void updateFileTransferStatusDlg(const std::string &text) override { calls_.push_back(text); }

private:
    void note(const char *what, bool on)
    {
        calls_.push_back(std::string(what) + (on ? " on" : " off"));
    }
    std::vector<std::string> &calls_;
    bool laser_ = false;
};

} // namespace orv::test
