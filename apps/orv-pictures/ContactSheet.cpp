#include "orv-pictures/ContactSheet.h"

#include <QFont>
#include <QPainter>

#include <algorithm>

namespace orv::pictures {

namespace {

constexpr int kSheetWidth = 1280;
constexpr int kMargin = 16;
constexpr int kGap = 4;
constexpr int kCaptionHeight = 24;
constexpr int kCaptionPixels = 13;
constexpr QRgb kGround = 0xFF6E7682;

/// Where an image or a caption goes on the sheet.
struct Place {
    QPoint corner;
    const QImage *image;
    const QString *caption;
};

/// Goes down the sheet row by row.
class Layout {
public:
    void add(const SheetGroup &group)
    {
        endRow();
        places_.push_back({QPoint(kMargin, y_), nullptr, &group.caption});
        y_ += kCaptionHeight;
        for (const QImage &image : group.images) {
            if (x_ > kMargin && x_ + image.width() > kSheetWidth - kMargin) {
                endRow();
            }
            places_.push_back({QPoint(x_, y_), &image, nullptr});
            x_ += image.width() + kGap;
            rowHeight_ = std::max(rowHeight_, image.height());
        }
        endRow();
    }

    [[nodiscard]] const std::vector<Place> &places() const { return places_; }
    [[nodiscard]] int height() const { return y_ + kMargin; }

private:
    void endRow()
    {
        y_ += rowHeight_ > 0 ? rowHeight_ + kGap : 0;
        x_ = kMargin;
        rowHeight_ = 0;
    }

    std::vector<Place> places_;
    int x_ = kMargin;
    int y_ = kMargin;
    int rowHeight_ = 0;
};

} // namespace

QImage contactSheet(const std::vector<SheetGroup> &groups)
{
    Layout layout;
    for (const SheetGroup &group : groups) {
        layout.add(group);
    }
    QImage sheet(kSheetWidth, layout.height(), QImage::Format_RGB32);
    sheet.fill(kGround);
    QPainter painter(&sheet);
    QFont font(QStringLiteral("Helvetica"));
    font.setPixelSize(kCaptionPixels);
    painter.setFont(font);
    painter.setPen(Qt::white);
    for (const Place &place : layout.places()) {
        if (place.image != nullptr) {
            painter.drawImage(place.corner, *place.image);
        } else {
            const QRect line(place.corner, QSize(kSheetWidth - 2 * kMargin, kCaptionHeight));
            painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, *place.caption);
        }
    }
    return sheet;
}

} // namespace orv::pictures
