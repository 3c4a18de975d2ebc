#include "Engine/CellFormats.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;
using Kind = CellFormats::Kind;

TEST(CellFormats, builtInIdsHaveTheirKinds)
{
    std::vector<std::int64_t> ids;
    for (std::int64_t id = 0; id < 200; ++id)
        ids.push_back(id);
    const CellFormats formats(ids);
    for (std::int64_t id = 0; id < 200; ++id) {
        const bool isTime = (id >= 18 && id <= 21) || (id >= 45 && id <= 47);
        const Kind expected = id >= 14 && id <= 17 ? Kind::date
            : id == 22                             ? Kind::dateTime
            : isTime                               ? Kind::time
                                                   : Kind::general;
        EXPECT_EQ(formats.kind(id), expected) << id;
    }
}

TEST(CellFormats, stylesOutOfRangeAreGeneral)
{
    const CellFormats formats({14});
    EXPECT_EQ(formats.kind(0), Kind::date);
    EXPECT_EQ(formats.kind(1), Kind::general);
    EXPECT_EQ(formats.kind(-1), Kind::general);
    EXPECT_EQ(formats.kind(std::nullopt), Kind::general);
    EXPECT_EQ(CellFormats({}).kind(0), Kind::general);
}

TEST(CellFormats, onlyCellXfsCount)
{
    const TemporaryFolder folder;
    const auto part = folder.write("styles.xml",
        "<styleSheet><cellStyleXfs><xf numFmtId='22'/></cellStyleXfs><cellXfs><xf numFmtId='14'/><xf/><xf numFmtId=''/>"
        "<xf numFmtId='x'/><xf numFmtId='+20'/><xf numFmtId='164'/></cellXfs><cellStyles><xf "
        "numFmtId='22'/></cellStyles>"
        "</styleSheet>");
    const CellFormats formats = CellFormats::fromStyles(part, {});
    EXPECT_EQ(formats.kind(0), Kind::date);
    for (const int general : {1, 2, 3, 5, 6})
        EXPECT_EQ(formats.kind(general), Kind::general) << general;
    EXPECT_EQ(formats.kind(4), Kind::time);
    EXPECT_EQ(CellFormats::fromStyles(std::nullopt, {}).kind(0), Kind::general);
    EXPECT_EQ(CellFormats::fromStyles(folder / "missing", {}).kind(0), Kind::general);
}

TEST(CellFormats, datesCountFromTheEndOf1899)
{
    EXPECT_EQ(CellFormats::render("45000", Kind::date), "2023-03-15");
    EXPECT_EQ(CellFormats::render("0", Kind::date), "1899-12-30");
    EXPECT_EQ(CellFormats::render("60", Kind::date), "1900-02-28") << "the serial system's leap year isn't corrected";
    EXPECT_EQ(CellFormats::render("36585", Kind::date), "2000-02-29");
    EXPECT_EQ(CellFormats::render("-1", Kind::date), "1899-12-29");
    EXPECT_EQ(CellFormats::render("-0.25", Kind::dateTime), "1899-12-29 18:00:00");
    EXPECT_EQ(CellFormats::render("-115860", Kind::date), "1582-10-13") << "Gregorian all the way back";
    EXPECT_EQ(CellFormats::render("2958466", Kind::date), "10000-01-01");
}

TEST(CellFormats, dateTimesAreRoundedToTheSecond)
{
    EXPECT_EQ(CellFormats::render("45000.5", Kind::dateTime), "2023-03-15 12:00:00");
    EXPECT_EQ(CellFormats::render("44999.999999", Kind::dateTime), "2023-03-15 00:00:00");
    EXPECT_EQ(CellFormats::render("1e4", Kind::dateTime), "1927-05-18 00:00:00");
    EXPECT_EQ(CellFormats::render("0x10", Kind::date), "1900-01-15");
}

TEST(CellFormats, timesDropTheDaysAndDoNotWrap)
{
    EXPECT_EQ(CellFormats::render("0.25", Kind::time), "06:00:00");
    EXPECT_EQ(CellFormats::render("0.5", Kind::time), "12:00:00");
    EXPECT_EQ(CellFormats::render("1.5", Kind::time), "12:00:00");
    EXPECT_EQ(CellFormats::render("0.9999999", Kind::time), "24:00:00");
    EXPECT_EQ(CellFormats::render("-0.25", Kind::time), "-6:00:00");
    EXPECT_EQ(CellFormats::render("-0.3", Kind::time), "-7:-12:00");
    EXPECT_EQ(CellFormats::render("3", Kind::time), "00:00:00");
}

TEST(CellFormats, whatIsNoFiniteNumberStaysAsItIs)
{
    for (const Kind kind : {Kind::general, Kind::date, Kind::time, Kind::dateTime}) {
        for (const char *value : {"", "n/a", " 45000", "45000 ", "1,5", "nan", "inf", "-INFINITY"})
            EXPECT_EQ(CellFormats::render(value, kind), value);
    }
    EXPECT_EQ(CellFormats::render("1e300", Kind::date), "1e300");
    EXPECT_EQ(CellFormats::render("007.50", Kind::general), "007.50");
}
