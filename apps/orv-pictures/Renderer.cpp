#include "orv-pictures/Renderer.h"

#include "orv-pictures/PictureError.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QXmlStreamReader>
#include <QtGlobal>

#include <mutex>

namespace orv::pictures {

namespace {

// Moderate: small pictures gain little from more.
constexpr int kPngQuality = 60;

thread_local QString *remarks = nullptr;
QtMessageHandler otherMessages = nullptr;

void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (remarks != nullptr) {
        *remarks = message;
    } else {
        otherMessages(type, context, message);
    }
}

/// The last thing that the toolkit says on this thread while it lives; it tells of a drawing it
/// does not understand in no other way.
class Remarks {
public:
    Remarks()
    {
        static std::once_flag once;
        std::call_once(once, [] { otherMessages = qInstallMessageHandler(takeMessage); });
        remarks = &text_;
    }
    ~Remarks() { remarks = nullptr; }
    Remarks(const Remarks &) = delete;
    Remarks &operator=(const Remarks &) = delete;

    [[nodiscard]] std::string text() const { return text_.simplified().toStdString(); }

private:
    QString text_;
};

/// What makes it no XML; empty when it is. The drawing's own reader does not say.
std::string brokenXml(const QByteArray &text)
{
    QXmlStreamReader reader(text);
    while (!reader.atEnd()) {
        reader.readNext();
    }
    QString reason = reader.errorString().simplified();
    while (reason.endsWith('.')) {
        reason.chop(1);
    }
    return reason.toStdString();
}

void check(bool fits, const std::string &name, const std::string &reason)
{
    if (!fits) {
        throw PictureError(name + ": the drawing cannot be read: " + reason + ".");
    }
}

} // namespace

Renderer::Renderer(const std::string &svg, const std::string &name)
{
    const QByteArray text = QByteArray::fromStdString(svg);
    const std::string broken = brokenXml(text);
    check(broken.empty(), name, broken);
    const Remarks heard;
    const bool read = renderer_.load(text);
    check(heard.text().empty(), name, heard.text());
    check(read, name, "it is no SVG");
}

QImage Renderer::image(QSize pixels)
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer_.render(&painter);
    return image;
}

QByteArray pngOf(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(kPngQuality);
    if (!writer.write(image)) {
        throw PictureError("A picture cannot be packed: " + writer.errorString().toStdString() +
                           ".");
    }
    return bytes;
}

} // namespace orv::pictures
