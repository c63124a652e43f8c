#pragma once

#include "platform/desktop/XConnection.h"

#include <QAbstractNativeEventFilter>

#include <functional>

namespace orv::platform {

/// Knows whether a compositor blends windows by their alpha, and tells when one comes or goes.
///
/// Thread   main thread only.
class CompositorWatch final : public QAbstractNativeEventFilter {
public:
    /// `changed` is called from the event loop, after `isPresent` has its new answer.
    CompositorWatch(const XConnection &x, std::function<void()> changed);
    ~CompositorWatch() override;
    CompositorWatch(const CompositorWatch &) = delete;
    CompositorWatch &operator=(const CompositorWatch &) = delete;

    [[nodiscard]] bool isPresent() const { return present_; }

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    std::function<void()> changed_;
    xcb_atom_t selection_;
    std::uint8_t selectionEvent_ = 0;
    bool present_ = false;
};

} // namespace orv::platform
