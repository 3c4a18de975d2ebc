// The module NolfaKitTesseract: text recognition by way of Tesseract.

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Platform/TextLineReader.h"

#include <algorithm>
#include <leptonica/allheaders.h>
#include <memory>
#include <mutex>
#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>
#include <tesseract/resultiterator.h>

/// Of the OpenMP library that Tesseract itself uses; the compiler's own may be another.
extern "C" void omp_set_max_active_levels(int levels);

namespace nolfa {

namespace {

struct PixDestroyer {
    void operator()(Pix *picture) const { pixDestroy(&picture); }
};
using PixHandle = std::unique_ptr<Pix, PixDestroyer>;

/// What Tesseract takes for a resolution when the picture tells none: that of a page rendered for recognition.
constexpr int assumedDotsPerInch = 216;

constexpr unsigned int white = 255;

/// Luma of a pixel on white paper, by the weights of ITU-R BT.601 in 256ths.
template <Bitmap::Layout layout> unsigned int grey(const std::uint8_t *pixel)
{
    if constexpr (layout == Bitmap::Layout::grey)
        return *pixel;
    constexpr unsigned int red = 77;
    constexpr unsigned int green = 150;
    constexpr unsigned int blue = 29;
    const unsigned int luma = (red * pixel[0] + green * pixel[1] + blue * pixel[2]) >> 8U;
    if constexpr (layout == Bitmap::Layout::rgb)
        return luma;
    const unsigned int alpha = pixel[3];
    return (luma * alpha + white * (white - alpha)) / white;
}

/// Straight into Leptonica's layout: four pixels a word, the first in its highest byte.
template <Bitmap::Layout layout> void copyRow(const std::uint8_t *from, int width, l_uint32 *to)
{
    constexpr int pixelsPerWord = 4;
    constexpr auto channels = static_cast<std::ptrdiff_t>(layout);
    for (int column = 0; column < width; column += pixelsPerWord) {
        l_uint32 word = 0;
        for (int index = 0; index < pixelsPerWord; ++index) {
            const bool isInside = column + index < width;
            word = word << 8U | (isInside ? grey<layout>(from) : white);
            from += isInside ? channels : 0;
        }
        *to++ = word;
    }
}

/// Grey is all that recognition looks at, and a quarter of what colours would take.
PixHandle greyPicture(const Bitmap &image)
{
    constexpr int depth = 8;
    PixHandle picture(pixCreateNoInit(image.width, image.height, depth));
    if (!picture)
        throw PlatformError("no memory for the picture");
    const auto copy = image.layout == Bitmap::Layout::grey ? copyRow<Bitmap::Layout::grey>
        : image.layout == Bitmap::Layout::rgb              ? copyRow<Bitmap::Layout::rgb>
                                                           : copyRow<Bitmap::Layout::rgba>;
    const l_int32 wordsPerRow = pixGetWpl(picture.get());
    for (int row = 0; row < image.height; ++row) {
        copy(image.pixels.data() + static_cast<std::size_t>(row) * image.bytesPerRow(), image.width,
            pixGetData(picture.get()) + static_cast<std::ptrdiff_t>(row) * wordsPerRow);
    }
    return picture;
}

/// Watches one reading.
class Monitor {
public:
    Monitor(const TextLineReader::Deadline &deadline, const std::stop_token &stop)
        : m_deadline(deadline)
        , m_stop(stop)
    {
        m_description.cancel_this = this;
        m_description.cancel = [](void *self, int) { return static_cast<Monitor *>(self)->isOver(); };
    }
    Monitor(const Monitor &) = delete;
    Monitor &operator=(const Monitor &) = delete;

    [[nodiscard]] tesseract::ETEXT_DESC *description() { return &m_description; }

    [[nodiscard]] bool isLate() const { return m_deadline && std::chrono::steady_clock::now() >= *m_deadline; }
    [[nodiscard]] bool isOver() const { return m_stop.stop_requested() || isLate(); }

    /// @throws CancellationError after a stop; PlatformError after the deadline
    void throwIfOver() const
    {
        throwIfStopped(m_stop);
        if (isLate())
            throw PlatformError("text recognition ran out of time");
    }

private:
    TextLineReader::Deadline m_deadline;
    const std::stop_token &m_stop;
    tesseract::ETEXT_DESC m_description;
};

/// Leaves the engine without the picture, ready for the next.
class Clearing {
public:
    explicit Clearing(tesseract::TessBaseAPI &api)
        : m_api(api)
    {
    }
    Clearing(const Clearing &) = delete;
    Clearing &operator=(const Clearing &) = delete;
    ~Clearing() { m_api.Clear(); }

private:
    tesseract::TessBaseAPI &m_api;
};

class TesseractReader : public TextLineReader {
public:
    TesseractReader(const char *folder, const char *languages)
    {
        // Parameters of the whole library, and what it reads at its start, are shared by all engines.
        static std::mutex starting;
        const std::scoped_lock lock(starting);
        m_api.SetVariable("debug_file", "/dev/null");
        if (m_api.Init(folder, languages, tesseract::OEM_LSTM_ONLY) != 0)
            throw PlatformError(std::string("text recognition can't start for ") + languages + " in " + folder);
        m_api.SetPageSegMode(tesseract::PSM_AUTO);
    }

    [[nodiscard]] std::vector<RecognizedLine> read(
        const Bitmap &image, const Deadline &deadline, const std::stop_token &stop) override
    {
        // Its inner threads make a page five times as dear. The setting belongs to the thread that recognises.
        omp_set_max_active_levels(0);
        Monitor monitor(deadline, stop);
        const PixHandle picture = greyPicture(image);
        monitor.throwIfOver();
        m_api.SetImage(picture.get());
        m_api.SetSourceResolution(assumedDotsPerInch);
        const Clearing clearing(m_api);
        const int result = m_api.Recognize(monitor.description());
        monitor.throwIfOver();
        if (result != 0)
            throw PlatformError("text recognition failed");
        return lines(image);
    }

private:
    [[nodiscard]] std::vector<RecognizedLine> lines(const Bitmap &image)
    {
        constexpr auto level = tesseract::RIL_TEXTLINE;
        std::vector<RecognizedLine> result;
        const std::unique_ptr<tesseract::ResultIterator> iterator(m_api.GetIterator());
        if (!iterator || iterator->Empty(tesseract::RIL_BLOCK))
            return result;
        do {
            const std::unique_ptr<char[]> text(iterator->GetUTF8Text(level));
            int left = 0;
            int top = 0;
            int right = 0;
            int bottom = 0;
            if (!text || !iterator->BoundingBox(level, &left, &top, &right, &bottom))
                continue;
            std::string line(text.get());
            // The end of the line is no part of it.
            while (!line.empty() && line.back() == '\n')
                line.pop_back();
            const double width = image.width;
            const double height = image.height;
            const Rectangle box{
                left / width, (height - bottom) / height, (right - left) / width, (bottom - top) / height};
            constexpr float percent = 100;
            result.push_back({std::move(line), box, iterator->Confidence(level) / percent});
        } while (iterator->Next(level));
        return result;
    }

    tesseract::TessBaseAPI m_api;
};

} // namespace

} // namespace nolfa

extern "C" __attribute__((visibility("default"))) nolfa::TextLineReader *nolfaMakeTextLineReader(
    const char *folder, const char *languages);

nolfa::TextLineReader *nolfaMakeTextLineReader(const char *folder, const char *languages)
{
    return new nolfa::TesseractReader(folder, languages);
}
