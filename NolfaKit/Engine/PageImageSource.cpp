#include "Engine/PageImageSource.h"

#include <utility>

namespace nolfa {

PageImageSource::PageImageSource(PDFDocument document)
    : m_doc(std::move(document))
{
}

std::optional<Bitmap> PageImageSource::image(std::size_t index, double scale, const std::stop_token &stop)
{
    const std::scoped_lock lock(m_lock);
    return m_doc.render(index, scale, stop);
}

} // namespace nolfa
