#pragma once
#include "platform/Navigation.h"
#include "platform/RegistryStore.h"
#include "platform/ReportControl.h"
#include <QHash>
#include <QList>
#include <QString>
#include <functional>

namespace test {

/// Keeps what the modules ask of the shell.
class TestNavigation : public platform::Navigation {
  public:
    bool hasScreen(const QString&) const override { return true; }

    void showScreen(const QString& screen, bool) override { shown << screen; }

    void openOrderForNumber(const QString& number) override { openedNumber = number; }

    void openCustomer(qint64 customerId) override { openedCustomer = customerId; }

    void openBooking(qint64 trxNr) override { openedBooking = trxNr; }

    void openVorbestellung(qint64 trxNr) override { openedVorbestellung = trxNr; }

    void showVorbestellung(qint64 trxNr) override { listedVorbestellung = trxNr; }

    void showVorbestellungAlarm(qint64 trxNr) override { alarms << trxNr; }

    void showNextTrxNr(const QString& number) override { nextTrxNr = number; }

    void showVorbestellungCount(qint64 count) override { vorbestellungCount = count; }

    void incomingCall(const QString&, const QString& AnrufNr, const QString&) override { call = AnrufNr; }

    void endProgram(int) override { ended = true; }

    QStringList shown;
    QString openedNumber, nextTrxNr, call;
    qint64 openedCustomer = -1, openedBooking = -1, vorbestellungCount = -1, openedVorbestellung = -1,
           listedVorbestellung = -1;
    QList<qint64> alarms;
    bool ended = false;
};

class TestPrinters : public platform::Printers {
  public:
    QList<platform::Printer> all() override { return printers; }

    platform::Printer defaultPrinter() override { return current; }

    void setDefaultPrinter(const platform::Printer& printer) override { current = printer; }

    QList<platform::Printer> printers;
    platform::Printer current;
};

/// Keeps each run's file, printer and destination.
class TestReports : public platform::ReportControl {
  public:
    struct Run {
        QString file, printer, data;
        int destination;
    };

    void PrintReport() override {
        runs.append({ReportFileName, PrinterName, DataFile, destination});
        if (onPrint)
            onPrint();
    }

    QList<Run> runs;
    std::function<void()> onPrint;
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
