#include "platform/raster/JpegCoding.h"

#include "platform/raster/PixelMath.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <new>
#include <vector>

#include <jpeglib.h>

namespace orv::platform {

namespace {

/// As many rows as the coder takes in one go, so that they are in the cache when it comes to them.
constexpr int kRows = 16;
/// Small, as each step is filled with zeros first; the vector takes larger steps behind it.
constexpr std::size_t kStepBytes = std::size_t{64} << 10U;

bool isOpaque(const std::uint32_t *pixels, std::size_t count)
{
    // Several at a time: the compiler makes wide registers of them.
    std::array<std::uint32_t, 8> common{};
    common.fill(~0U);
    std::size_t i = 0;
    for (; i + common.size() <= count; i += common.size()) {
        for (std::size_t k = 0; k < common.size(); ++k) {
            common[k] &= pixels[i + k];
        }
    }
    std::uint32_t all = ~0U;
    for (const std::uint32_t one : common) {
        all &= one;
    }
    for (; i < count; ++i) {
        all &= pixels[i];
    }
    return alphaOf(all) == 0xFF;
}

/// One picture on its way into a file. The coder's part of it knows neither exceptions nor
/// destructors: where it fails it jumps back to `encode`, which owns nothing.
class JpegCoder {
public:
    JpegCoder(const Image &image, Data &bytes) : image_(image), bytes_(bytes)
    {
        coder_.err = jpeg_std_error(&errors_);
        coder_.client_data = this;
        errors_.error_exit = [](j_common_ptr coder) {
            std::longjmp(static_cast<JpegCoder *>(coder->client_data)->failed_, 1);
        };
        errors_.output_message = [](j_common_ptr /*coder*/) {};
        destination_.init_destination = [](j_compress_ptr coder) { growOrFail(coder); };
        destination_.empty_output_buffer = [](j_compress_ptr coder) -> boolean {
            growOrFail(coder);
            return TRUE;
        };
        destination_.term_destination = [](j_compress_ptr coder) {
            of(coder).bytes_.resize(of(coder).bytes_.size() -
                                    of(coder).destination_.free_in_buffer);
        };
    }
    ~JpegCoder() { jpeg_destroy_compress(&coder_); }
    JpegCoder(const JpegCoder &) = delete;
    JpegCoder &operator=(const JpegCoder &) = delete;

    bool encode(int quality)
    {
        if (setjmp(failed_) != 0) {
            return false;
        }
        jpeg_create_compress(&coder_);
        coder_.dest = &destination_;
        coder_.image_width = static_cast<JDIMENSION>(image_.width());
        coder_.image_height = static_cast<JDIMENSION>(image_.height());
        coder_.input_components = 4;
        coder_.in_color_space = JCS_EXT_BGRX;
        // They choose 4:2:0.
        jpeg_set_defaults(&coder_);
        jpeg_set_quality(&coder_, quality, TRUE);
        jpeg_start_compress(&coder_, TRUE);
        for (int y = 0; y < image_.height(); y += kRows) {
            writeRows(y, std::min(kRows, image_.height() - y));
        }
        jpeg_finish_compress(&coder_);
        return true;
    }

private:
    static JpegCoder &of(j_compress_ptr coder)
    {
        return *static_cast<JpegCoder *>(coder->client_data);
    }
    static void growOrFail(j_compress_ptr coder)
    {
        if (!of(coder).grow()) {
            coder->err->error_exit(reinterpret_cast<j_common_ptr>(coder));
        }
    }
    /// Called when all bytes are in use.
    bool grow() noexcept;
    void writeRows(int first, int count);
    const std::uint32_t *overWhite(const std::uint32_t *pixels, std::size_t count);

    const Image &image_;
    Data &bytes_;
    std::vector<std::uint32_t> overWhite_;
    jpeg_compress_struct coder_{};
    jpeg_error_mgr errors_{};
    jpeg_destination_mgr destination_{};
    std::jmp_buf failed_{};
};

bool JpegCoder::grow() noexcept
{
    const std::size_t used = bytes_.size();
    try {
        bytes_.resize(used + kStepBytes);
    } catch (const std::bad_alloc &) {
        return false;
    }
    destination_.next_output_byte = bytes_.data() + used;
    destination_.free_in_buffer = bytes_.size() - used;
    return true;
}

void JpegCoder::writeRows(int first, int count)
{
    const auto width = static_cast<std::size_t>(image_.width());
    const std::uint32_t *pixels =
        overWhite(image_.row(first), width * static_cast<std::size_t>(count));
    std::array<JSAMPROW, kRows> rows{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        // The coder only reads them.
        rows[i] = const_cast<JSAMPROW>(reinterpret_cast<const JSAMPLE *>(pixels + i * width));
    }
    jpeg_write_scanlines(&coder_, rows.data(), static_cast<JDIMENSION>(count));
}

/// The pixels themselves where all are opaque, which costs no copy.
const std::uint32_t *JpegCoder::overWhite(const std::uint32_t *pixels, std::size_t count)
{
    constexpr std::uint32_t white = 0xFFFFFFFF;
    if (isOpaque(pixels, count)) {
        return pixels;
    }
    overWhite_.assign(pixels, pixels + count);
    fillBehind(overWhite_.data(), count, white);
    return overWhite_.data();
}

} // namespace

Data jpegOf(const Image &image, int quality)
{
    if (image.width() <= 0 || image.height() <= 0) {
        return {};
    }
    Data bytes;
    if (!JpegCoder(image, bytes).encode(quality)) {
        bytes.clear();
    }
    return bytes;
}

} // namespace orv::platform
