#include "console/views/print/QtPrintOutput.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

template <class Condition>
bool WaitFor(Condition isTrue) {
    const QDeadlineTimer deadline(20000);
    while (!isTrue() && !deadline.hasExpired()) QApplication::processEvents(QEventLoop::AllEvents, 20);
    return isTrue();
}

struct PrintWorld {
    PageLayout LayOut(std::size_t lines, const Text& line = "line") const {
        return {{.title = "t", .lines = std::vector<Text>(lines, line)}, {210, 297}, "now", captions};
    }
    Language language{};
    Captions captions{language};
    TempFolder folder{};
    std::optional<Text> failure{};
    PrintJobs jobs{};
    PrintJobs::Done done = [this](const Text& text) { failure = text; };
};

// Temporary files of this program alone: others print into the common folder at the same time.
class TemporaryFilesIn {
 public:
    explicit TemporaryFilesIn(const std::string& path) { qputenv("TMPDIR", path.c_str()); }
    ~TemporaryFilesIn() { m_before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_before); }
    TemporaryFilesIn(const TemporaryFilesIn&) = delete;
    TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;

 private:
    const QByteArray m_before = qgetenv("TMPDIR");
};

TEST(PageLayout, BreaksPagesAndLongLines) {
    const PrintWorld w;
    EXPECT_EQ(w.LayOut(0).PageCount(), 1);
    EXPECT_EQ(w.LayOut(10).PageCount(), 1);
    const int pages = w.LayOut(1000).PageCount();
    EXPECT_GT(pages, 8);
    EXPECT_LT(pages, 30);
    const PageLayout wide = w.LayOut(1, Text(160, 'x'));
    EXPECT_GT(wide.PageSize().width(), wide.PageSize().height()) << "turned for a long line";
    EXPECT_GT(w.LayOut(10, Text(20000, 'x')).PageCount(), 10);
    PrinterSettings largest;
    largest.FontSize = 72;
    largest.LeftMargin = largest.TopMargin = 150;
    const PageLayout odd({.lines = {Text("\0\x1b\t", 3), ""}, .look = largest}, {210, 297}, "", w.captions);
    EXPECT_GE(odd.PageCount(), 1);
}

TEST(PageLayout, KeepsEveryCharacterOfALine) {
    const PrintWorld w;
    for (const char* font : {"", "DejaVu Sans"}) {
        PrinterSettings look;
        look.FontName = font;
        const PageLayout layout({.lines = {Text(30, 'W'), Text(4000, 'i')}, .look = look}, {210, 297}, "",
                                w.captions);
        QString all;
        for (const QString& line : layout.Lines()) all += line;
        EXPECT_EQ(all.count(u'W'), 30);
        EXPECT_EQ(all.count(u'i'), 4000);
    }
}

TEST(PrintJobs, SavesAPdfFile) {
    PrintWorld w;
    const QString path = QString::fromStdString(w.folder.Resolve("a.pdf"));
    w.jobs.SavePdf(w.LayOut(300), path, w.done);
    ASSERT_TRUE(WaitFor([&] { return w.failure.has_value(); }));
    EXPECT_EQ(*w.failure, "");
    const Text bytes = w.folder.Read("a.pdf");
    EXPECT_TRUE(bytes.starts_with("%PDF"));
    EXPECT_NE(bytes.find("%%EOF"), Text::npos);
}

TEST(PrintJobs, HandsTheFileToTheFirstSpoolerThereIs) {
    const struct {
        std::vector<std::string> spoolers;
        bool isGood;
    } rows[] = {{{"no-such-spooler", "true"}, true}, {{"false"}, false}, {{"no-such-spooler"}, false}};
    for (const auto& row : rows) {
        PrintWorld w;
        const TemporaryFilesIn place(w.folder.Path());
        w.jobs.UseSpoolers(row.spoolers);
        w.jobs.Print(w.LayOut(3), "title", {}, w.done);
        ASSERT_TRUE(WaitFor([&] { return w.failure.has_value(); }));
        EXPECT_EQ(w.failure->empty(), row.isGood) << row.spoolers.front();
        EXPECT_TRUE(QDir::temp().entryList({"nordkeep-*.pdf"}).isEmpty()) << "no file stays behind";
    }
}

TEST(QtPrintOutput, WithoutAPrinterShowsWhatAnOperatorAskedForAndLogs) {
    for (const bool isUnattended : {false, true}) {
        PrintWorld w;
        ManualTime time;
        SysLog log(w.folder.Tree(), time);
        int logged = 0;
        log.SetRowListener([&](const LogRow&) { ++logged; });
        QtPrintOutput output({w.captions, time, log, [] { return nullptr; }});
        output.Jobs().UseSpoolers({"no-such-spooler"});
        output.Print({.title = "t", .lines = {"x"}, .isUnattended = isUnattended});
        ASSERT_TRUE(WaitFor([&] { return logged == 1; }));
        int shown = 0;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!dynamic_cast<PreviewWindow*>(window)) continue;
            ++shown;
            delete window;
        }
        EXPECT_EQ(shown, isUnattended ? 0 : 1);
    }
}

}  // namespace
}  // namespace nordkeep
