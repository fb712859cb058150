#include "platform/report/PreviewWindow.h"
#include "tests/platform/ReportSample.h"
#include "tests/support/TestDialogs.h"
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPrintPreviewWidget>
#include <QtTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::PreviewWindow;

namespace {

class ReportPreviewTest : public testing::Test {
  protected:
    ~ReportPreviewTest() override { delete m_window; }

    PreviewWindow* open(int number, const platform::ReportData& data, const QString& printer = {}) {
        const platform::ReportTemplate report(QStringLiteral(TAVOLINO_SOURCE_DIR) +
                                              u"/reports/rep_report%1.rpt"_s.arg(number));
        m_window = new PreviewWindow(platform::ReportDocument(report.fill(data)), printer, m_dialogs);
        m_window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
        return m_window;
    }

    QString position() const { return m_window->findChild<QLabel*>(u"lbl_Seite"_s)->text(); }

    QAction* action(const char* name) const {
        return m_window->findChild<QAction*>(QString::fromLatin1(name));
    }

    test::TestDialogs m_dialogs;
    QPointer<PreviewWindow> m_window;
};

} // namespace

TEST_F(ReportPreviewTest, PagesAreTurnedByKeysAndEachWindowLivesAlone) {
    const QPointer<PreviewWindow> first = open(3, test::slipSample());
    PreviewWindow* window = open(1, test::longSlipSample(100));
    EXPECT_EQ(window->windowTitle(), u"Auftragsschein"_s);
    ASSERT_GT(window->preview()->pageCount(), 2);
    const QString of = u" von %1"_s.arg(window->preview()->pageCount());
    EXPECT_EQ(position(), u"Seite 1"_s + of);
    EXPECT_FALSE(action("cmdPreviousPage")->isEnabled());
    QTest::keyClick(window, Qt::Key_PageDown);
    EXPECT_EQ(position(), u"Seite 2"_s + of);
    QTest::keyClick(window, Qt::Key_PageUp);
    EXPECT_EQ(position(), u"Seite 1"_s + of);
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(window, Qt::Key_PageDown);
    EXPECT_FALSE(action("cmdNextPage")->isEnabled());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window.isNull(); }));
    ASSERT_TRUE(first);
    EXPECT_TRUE(first->isVisible());
    delete first;
}

TEST_F(ReportPreviewTest, PrintingWithoutPrinterIsTold) {
    open(2, test::slipSample());
    m_dialogs.answer(platform::kAnswerCancel);
    action("cmdPrint")->trigger();
    ASSERT_EQ(m_dialogs.said.size(), 1);
    EXPECT_TRUE(m_dialogs.last().text.contains(u"Es ist kein Drucker eingerichtet."_s));
    EXPECT_FALSE(m_dialogs.last().text.contains(u"gespeichert"_s))
        << "what is previewed may not be stored yet";
}
