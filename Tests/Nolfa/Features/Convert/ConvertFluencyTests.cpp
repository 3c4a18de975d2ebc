// The model stays fluent, whatever is dropped on it: a promise about time, measured as the best of several runs.

#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/Fluency.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/RecordingDesktop.h"

using namespace nolfa;
using namespace nolfa::testing;

namespace {

/// Reads, like a list on screen, the rows that show of what changed.
void watch(ConvertItemModel &model)
{
    static constexpr int shown = 20;
    const auto read = [&model](int first, int last) {
        for (int row = first; row <= std::min(last, shown); ++row) {
            for (const int role : model.roleNames().keys())
                (void)model.index(row).data(role);
        }
    };
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
        [read](const QModelIndex &first, const QModelIndex &last) { read(first.row(), last.row()); });
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
        [read](const QModelIndex &, int first, int last) { read(first, last); });
}

} // namespace

TEST(ConvertFluency, tenThousandFilesNeverHoldTheModelUp)
{
    ensureApplication();
    const QList<QUrl> files = manyFiles(10'000);
    expectFluent(Milliseconds(50), [&files] {
        ConvertViewModel model(nullptr,
            {.service = std::make_shared<SwiftService>(),
                .clock = std::make_shared<ManualClock>(),
                .desktop = std::make_shared<RecordingDesktop>()});
        watch(*model.itemModel());
        return measureUse(model, files);
    });
}
