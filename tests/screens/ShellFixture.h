#pragma once
#include "desks/OrderDesk.h"
#include "platform/line/TelephoneLine.h"
#include "shell/Application.h"
#include "tests/support/TestDialogs.h"
#include "tests/support/TestFirm.h"
#include "tests/support/TestFirmServices.h"
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

namespace test {

/// A line that rings when the test says so.
class FakeLine : public platform::BasicCAPI32 {
    Q_OBJECT
  public:
    bool IsAvailable() override { return true; }

    void Start() override {
        if (onStart)
            onStart();
    }

    void Stop() override { ++stops; }

    std::function<void()> onStart;
    int stops = 0;
};

/// Stands for the order screen.
class FakeDesk : public QWidget, public desks::OrderDesk {
    Q_OBJECT
  public:
    explicit FakeDesk(QStringList& asked, QWidget* parent) : QWidget(parent), m_asked(asked) {}

    void takeCall(const QString& number) override { m_asked.append(QStringLiteral("call ") + number); }

    void searchNumber(const QString& number) override { m_asked.append(QStringLiteral("search ") + number); }

    void loadBooking(qint64 trxNr) override { m_asked.append(QStringLiteral("load %1").arg(trxNr)); }

    void restoreDraft() override { m_asked.append(QStringLiteral("draft")); }

    void keyWebOrder(const desks::WebOrder& order) override {
        m_asked.append(QStringLiteral("web order %1").arg(order.id.number));
    }

    void loadPreOrder(qint64 trxNr) override { m_asked.append(QStringLiteral("pre-order %1").arg(trxNr)); }

  private:
    QStringList& m_asked;
};

/// An installation in a temporary folder, and the program on it.
class ShellTest : public testing::Test {
  protected:
    ShellTest();
    ~ShellTest() override;

    /// A new program on the folder; the one before is gone by then.
    shell::Application& build();
    /// Builds and starts.
    frmMDI& start();

    template <typename Widget> Widget* find(const char* name) {
        return app->mainWindow().template findChild<Widget*>(QLatin1String(name));
    }

    QString label(const char* name) { return find<QLabel>(name)->text(); }

    /// One value of the main database.
    static QString query(const QString& sql) { return TestFirm::value(sql); }

    QTemporaryDir folder;
    TestDialogs dialogs;
    TestRegistry registry;
    TestReports reports;
    TestPrinters printers;
    TestInternet internet;
    FakeLine line;
    int keptCalls = 0;
    QString iniProblem;
    frmMDI::Procedures procedures;
    /// Exit codes that the program asked for.
    QList<int> ended;
    QStringList asked;
    bool withFakeDesk = true;
    std::unique_ptr<shell::Application> app;
};

} // namespace test
