// The module NolfaKitTesseract: text recognition by way of Tesseract.

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Platform/Tesseract/TextPicture.h"
#include "Platform/TextLineReader.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>
#include <tesseract/resultiterator.h>

/// Of the OpenMP library that Tesseract itself uses; the compiler's own may be another.
extern "C" void omp_set_max_active_levels(int levels);

namespace nolfa {

namespace {

/// What Tesseract takes for a resolution when the picture tells none: that of a page rendered for recognition.
constexpr int assumedDotsPerInch = 216;

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
        setMsgSeverity(L_SEVERITY_NONE);
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
        const PixHandle picture = TextPicture::make(image);
        monitor.throwIfOver();
        m_api.SetImage(picture.get());
        m_api.SetSourceResolution(assumedDotsPerInch);
        const Clearing clearing(m_api);
        const int result = m_api.Recognize(monitor.description());
        monitor.throwIfOver();
        if (result != 0)
            throw PlatformError("text recognition failed");
        return lines(*picture);
    }

private:
    [[nodiscard]] std::vector<RecognizedLine> lines(Pix &picture)
    {
        constexpr auto level = tesseract::RIL_TEXTLINE;
        std::vector<RecognizedLine> result;
        const std::unique_ptr<tesseract::ResultIterator> iterator(m_api.GetIterator());
        if (!iterator || iterator->Empty(tesseract::RIL_BLOCK))
            return result;
        do {
            // NOLINTNEXTLINE(modernize-avoid-c-arrays): a C string
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
            const double width = pixGetWidth(&picture);
            const double height = pixGetHeight(&picture);
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
