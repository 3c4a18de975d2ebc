#include "Platform/Qt/PagePrinter.h"

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"
#include "Platform/Qt/PrintDocument.h"
#include "Platform/Qt/QtRuntime.h"

#include <QFile>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QThread>
#include <exception>
#include <memory>

namespace nolfa {

namespace {

/// Device units a point: fine enough that rounded positions can't be seen.
constexpr int unitsAPoint = 4;
constexpr int pointsAnInch = 72;

void prepare(QPdfWriter &writer, const Size &page)
{
    writer.setCreator("Nolfa");
    writer.setPageSize(QPageSize(QSizeF(page.width, page.height), QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setResolution(pointsAnInch * unitsAPoint);
}

void drawPages(QPdfWriter &writer, const PrintDocument &document, const std::stop_token &stop)
{
    QPainter painter(&writer);
    if (!painter.isActive())
        throw PlatformError("no page could be begun");
    for (int page = 0; page < document.pageCount(); ++page) {
        throwIfStopped(stop);
        if (page > 0 && !writer.newPage())
            throw PlatformError("no page could be added");
        document.drawPage(painter, page);
    }
    if (!painter.end())
        throw PlatformError("the last page couldn't be finished");
}

/// The writer doesn't say what became of its bytes; a PDF that was written whole ends in its end mark.
void requireWhole(const std::filesystem::path &output)
{
    constexpr qint64 tail = 16;
    QFile file(QString::fromStdString(output.string()));
    if (!file.open(QIODevice::ReadOnly) || !file.seek(std::max<qint64>(0, file.size() - tail))
        || !file.readAll().contains("%%EOF"))
        throw PlatformError("the file couldn't be written whole");
}

void printHere(const HTMLPrinter::Job &job, const std::stop_token &stop)
{
    if (!QFile(QString::fromStdString(job.output.string())).open(QIODevice::WriteOnly))
        throw PlatformError("the file can't be written to");
    {
        QPdfWriter writer(QString::fromStdString(job.output.string()));
        prepare(writer, job.page);
        const PrintDocument document(job, writer, unitsAPoint);
        drawPages(writer, document, stop);
    }
    requireWhole(job.output);
}

} // namespace

void PagePrinter::print(const HTMLPrinter::Job &job, const std::stop_token &stop)
{
    QtRuntime::ensure();
    for (const std::filesystem::path &folder : job.fonts)
        QtRuntime::addFonts(folder);
    throwIfStopped(stop);
    // A layout starts timers, which only threads of Qt's own can.
    std::exception_ptr failure;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            printHere(job, stop);
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    thread->start();
    thread->wait();
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace nolfa
