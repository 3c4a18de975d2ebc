#include "Engine/JPEGFile.h"

#include "Engine/ByteReader.h"

#include <map>

namespace nolfa {

namespace {

enum Marker : std::uint8_t {
    startOfFrameBaseline = 0xC0,
    startOfFrameProgressive = 0xC2,
    huffmanTables = 0xC4,
    extensions = 0xC8,
    arithmeticConditioning = 0xCC,
    lastStartOfFrame = 0xCF,
    firstRestart = 0xD0,
    startOfImage = 0xD8,
    endOfImage = 0xD9,
    startOfScan = 0xDA,
    quantisationTables = 0xDB,
    applicationExif = 0xE1,
    applicationProfile = 0xE2,
    applicationAdobe = 0xEE,
    escape = 0xFF,
};

constexpr std::string_view exifName("Exif\0\0", 6);
constexpr std::string_view profileName("ICC_PROFILE\0", 12);
constexpr std::string_view adobeName("Adobe", 5);

bool isFrame(std::uint8_t marker)
{
    return marker >= startOfFrameBaseline && marker <= lastStartOfFrame && marker != huffmanTables
        && marker != extensions && marker != arithmeticConditioning;
}

/// The orientation in a TIFF directory, as Exif has it; 1 when there is none.
int exifOrientation(std::string_view tiff)
{
    constexpr std::size_t entrySize = 12;
    constexpr std::uint16_t orientationTag = 0x0112;
    constexpr std::uint16_t typeShort = 3;
    constexpr int lastOrientation = 8;
    using enum ByteReader::Order;
    if (!tiff.starts_with("II") && !tiff.starts_with("MM"))
        return 1;
    const ByteReader reader(tiff, tiff.starts_with("II") ? littleEndian : bigEndian);
    const std::size_t directory = reader.doubleWord(4);
    const std::size_t count = reader.word(directory);
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t entry = directory + 2 + index * entrySize;
        if (reader.word(entry) != orientationTag || reader.word(entry + 2) != typeShort)
            continue;
        const int value = reader.word(entry + 8);
        return value >= 1 && value <= lastOrientation ? value : 1;
    }
    return 1;
}

/// Goes through the markers of a file from front to back.
class Scanner {
public:
    explicit Scanner(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    /// @return whether there was all that a picture needs
    bool run()
    {
        if (!m_bytes.starts_with("\xFF\xD8"))
            return false;
        std::size_t at = 2;
        while (m_isWhole && at < m_bytes.size()) {
            const std::uint8_t marker = nextMarker(at);
            if (marker == endOfImage || marker == 0)
                break;
            if (marker == startOfImage || (marker >= firstRestart && marker < startOfImage) || marker == 1)
                continue;
            const std::size_t length = ByteReader(m_bytes).word(at);
            if (length < 2 || at + length > m_bytes.size())
                return false;
            segment(marker, m_bytes.substr(at + 2, length - 2));
            at += length;
            if (marker == startOfScan) {
                m_file.dataStart = m_file.scans == 1 ? at : m_file.dataStart;
                at = endOfScan(at);
            }
        }
        joinProfile();
        return m_isWhole && m_frames == 1 && m_file.scans > 0 && m_hasQuantisation && m_hasHuffman;
    }

    JPEGFile &file() { return m_file; }
    /// Of one sample each, were they all kept.
    [[nodiscard]] std::uint64_t samples() const
    {
        return std::uint64_t(m_file.width) * std::uint64_t(m_file.height) * std::uint64_t(m_file.components);
    }

private:
    /// The marker at a place, which moves behind it; 0 when there is none.
    std::uint8_t nextMarker(std::size_t &at) const
    {
        // Bytes between segments are tolerated by every decoder.
        at = m_bytes.find(static_cast<char>(escape), at);
        while (at < m_bytes.size() && ByteReader(m_bytes).byte(at) == escape)
            ++at;
        return at < m_bytes.size() ? ByteReader(m_bytes).byte(at++) : std::uint8_t{0};
    }

    /// The place of the first marker behind compressed data.
    [[nodiscard]] std::size_t endOfScan(std::size_t at) const
    {
        for (;;) {
            at = m_bytes.find(static_cast<char>(escape), at);
            if (at == std::string_view::npos)
                return m_bytes.size();
            const std::uint8_t next = ByteReader(m_bytes).byte(at + 1);
            const bool isRestart = next >= firstRestart && next < startOfImage;
            if (next != 0 && !isRestart && next != escape)
                return at;
            at += next == escape ? 1 : 2;
        }
    }

    void segment(std::uint8_t marker, std::string_view content)
    {
        if (isFrame(marker))
            frame(marker, content);
        else if (marker == huffmanTables)
            m_hasHuffman = true;
        else if (marker == quantisationTables)
            m_hasQuantisation = true;
        else if (marker == startOfScan)
            ++m_file.scans;
        else if (marker == applicationExif && content.starts_with(exifName) && !m_hasExif)
            exif(content.substr(exifName.size()));
        else if (marker == applicationProfile && content.starts_with(profileName))
            profilePiece(content.substr(profileName.size()));
        else if (marker == applicationAdobe && content.starts_with(adobeName))
            adobe(content);
    }

    void exif(std::string_view content)
    {
        m_hasExif = true;
        m_file.orientation = exifOrientation(content);
    }

    void frame(std::uint8_t marker, std::string_view content)
    {
        constexpr std::size_t fixedSize = 6;
        constexpr std::size_t componentSize = 3;
        const ByteReader reader(content);
        ++m_frames;
        m_file.bits = reader.byte(0);
        m_file.height = reader.word(1);
        m_file.width = reader.word(3);
        m_file.components = reader.byte(5);
        m_file.isProgressive = marker == startOfFrameProgressive;
        const auto components = static_cast<std::size_t>(m_file.components);
        m_isWhole = marker <= startOfFrameProgressive && m_file.width > 0 && m_file.height > 0
            && content.size() == fixedSize + components * componentSize;
        const auto name = [&](std::size_t index) { return reader.byte(fixedSize + index * componentSize); };
        m_file.isPlainRGB = components == 3 && name(0) == 'R' && name(1) == 'G' && name(2) == 'B';
    }

    void adobe(std::string_view content)
    {
        constexpr std::size_t size = 12;
        m_file.hasAdobeMarker = m_file.hasAdobeMarker || content.size() >= size;
    }

    /// A number from 1, how many there are, and the piece.
    void profilePiece(std::string_view content)
    {
        if (content.size() <= 2)
            return;
        const ByteReader reader(content);
        m_profilePieces = reader.byte(1);
        m_profile.emplace(reader.byte(0), content.substr(2));
    }

    void joinProfile()
    {
        if (m_profile.empty() || m_profile.size() != m_profilePieces || m_profile.rbegin()->first != m_profilePieces)
            return;
        for (const auto &[number, piece] : m_profile)
            m_file.profile += piece;
    }

    std::string_view m_bytes;
    JPEGFile m_file;
    bool m_isWhole = true;
    int m_frames = 0;
    bool m_hasQuantisation = false;
    bool m_hasHuffman = false;
    bool m_hasExif = false;
    std::size_t m_profilePieces = 0;
    std::map<std::uint8_t, std::string_view> m_profile;
};

} // namespace

std::optional<JPEGFile> JPEGFile::read(std::string_view bytes)
{
    Scanner scanner(bytes);
    if (!scanner.run())
        return std::nullopt;
    return std::move(scanner.file());
}

bool JPEGFile::isBomb(std::string_view bytes)
{
    // Of a progressive picture a decoder keeps two bytes for each sample until the last scan.
    constexpr std::uint64_t mostKeptSamples = std::uint64_t{384} << 20U;
    // What a decoder goes through in some seconds. A 50-megapixel picture of ten scans needs a tenth.
    constexpr std::uint64_t mostSamplesOfAllScans = std::uint64_t{16} << 30U;
    Scanner scanner(bytes);
    (void)scanner.run();
    const std::uint64_t samples = scanner.samples();
    const bool isKept = scanner.file().isProgressive || scanner.file().scans > 1;
    return (isKept && samples > mostKeptSamples) || samples * scanner.file().scans > mostSamplesOfAllScans;
}

} // namespace nolfa
