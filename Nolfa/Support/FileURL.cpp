#include "Nolfa/Support/FileURL.h"

namespace nolfa::FileURL {

std::optional<std::filesystem::path> toPath(const QUrl &url)
{
    if (!url.isLocalFile() || !(url.host().isEmpty() || url.host() == "localhost"))
        return std::nullopt;
    // toLocalFile() would replace what isn't UTF-8.
    const QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    if (bytes.isEmpty() || bytes.contains('\0'))
        return std::nullopt;
    return std::filesystem::path(bytes.toStdString());
}

QUrl fromPath(const std::filesystem::path &path)
{
    return QUrl::fromEncoded("file://" + QByteArray::fromStdString(path.native()).toPercentEncoding("/"));
}

} // namespace nolfa::FileURL
