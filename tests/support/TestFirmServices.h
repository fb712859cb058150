#pragma once
#include "desks/CustomerDesk.h"
#include "desks/MainDesks.h"
#include "desks/OrderDesk.h"
#include "desks/PreOrderDesk.h"
#include "desks/WebOrderDesk.h"
#include "platform/Navigation.h"
#include "platform/RegistryStore.h"
#include "platform/net/QtInternet.h"
#include "platform/report/Reports.h"
#include <QHash>
#include <QList>
#include <QString>
#include <functional>

namespace test {

/// Keeps what is asked of the screens and of the main window.
class TestDesks : public QObject,
                  public desks::OrderDesk,
                  public desks::CustomerDesk,
                  public desks::PreOrderList,
                  public desks::PreOrderAlarm,
                  public desks::WebOrderList,
                  public desks::StatusBox,
                  public desks::CallDesk {
  public:
    void takeCall(const QString&) override {}

    void searchNumber(const QString& number) override { openedNumber = number; }

    void loadBooking(qint64 trxNr) override { openedBestellung = trxNr; }

    void restoreDraft() override {}

    void loadPreOrder(qint64 trxNr) override { openedVorbestellung = trxNr; }

    void keyWebOrder(const desks::WebOrder& order) override { keyedOrder = order; }

    void openCustomer(qint64) override {}

    void captureCustomer(const desks::WebCustomer& customer) override { capturedCustomer = customer; }

    void ShowVorbestellung(qint64) override {}

    void setFaellig(qint64 trxNr, const QString& kunde) override {
        alarms << trxNr;
        alarmKunde = kunde;
    }

    qint64 Faellig() const override { return alarms.isEmpty() ? 0 : alarms.last(); }

    QString EMail() const override { return webEMail; }

    void Refresh() override {}

    void showAuftragsNummer(const QString& number) override { nextTrxNr = number; }

    void showVorbestellungCount(qint64 count) override { vorbestellungCount = count; }

    void showKundenTotal(qint64) override {}

    void showMessage(const QString& message) override { messages << message; }

    void BasicCAPI32_IncomingCall(const QString&, const QString&, const QString&) override {}

    desks::WebOrder keyedOrder;
    desks::WebCustomer capturedCustomer;
    QString openedNumber, nextTrxNr;
    qint64 vorbestellungCount = -1, openedVorbestellung = -1, openedBestellung = -1;
    QList<qint64> alarms;
    QString alarmKunde, webEMail;
    QStringList messages; ///< what the status line said
};

class TestNavigation : public platform::Navigation, public TestDesks {
  public:
    bool hasScreen(const QString&) const override { return true; }

    QObject* showScreen(const QString& screen) override {
        shown << screen;
        return this;
    }

    QObject* mainWindow() const override { return const_cast<TestNavigation*>(this); }

    bool closeScreensBut(const QString& screen) override {
        keptOpen << screen;
        return allClose;
    }

    void standStill() override { standsStill = true; }

    void endProgram(int) override { ended = true; }

    QStringList keptOpen; ///< the screens that were to stay
    bool allClose = true;
    bool standsStill = false;

    QStringList shown;
    bool ended = false;
};

class TestPrinters : public platform::Printers {
  public:
    QList<platform::Printer> all() override { return printers; }

    platform::Printer defaultPrinter() override { return current; }

    QList<platform::Printer> printers;
    platform::Printer current;
};

/// Keeps each run.
class TestReports : public platform::Reports {
  public:
    platform::ReportEnd run(const platform::ReportJob& job) override {
        runs.append(job);
        return onRun ? onRun(job) : platform::ReportEnd::Done;
    }

    QList<platform::ReportJob> runs;
    std::function<platform::ReportEnd(const platform::ReportJob&)> onRun;
};

/// The real lines to the servers; without end points until the test sets them.
class TestInternet : public platform::QtInternet {
  public:
    TestInternet() : QtInternet({}) {}

    const platform::Endpoints& endpoints() const override { return ends; }

    platform::Endpoints ends;
};

class TestRegistry : public platform::RegistryStore {
  public:
    QString GetSetting(const QString& application, const QString& section, const QString& key,
                       const QString& fallback) override {
        return values.value(application + u'/' + section + u'/' + key, fallback);
    }

    void SaveSetting(const QString& application, const QString& section, const QString& key,
                     const QString& value) override {
        values.insert(application + u'/' + section + u'/' + key, value);
    }

    QHash<QString, QString> values;
};

} // namespace test
