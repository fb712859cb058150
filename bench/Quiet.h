#pragma once
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/RegistryStore.h"
#include "platform/Services.h"
#include "platform/net/QtInternet.h"
#include "platform/report/Reports.h"
#include "telephony/PhoneBook.h"

/// Services that do nothing, so that only the road itself is measured.
namespace bench {

class QuietDialogs : public platform::Dialogs {
  public:
    int MsgBox(const QString&, int, const QString&) override { return platform::kAnswerNo; }

    QString InputBox(const QString&, const QString&, const QString&) override { return {}; }

    QString OpenFile(const QString&, const QString&) override { return {}; }

    bool WaitForServer(const std::function<bool()>&, const QString& = {}) override { return false; }

    /// Watched work goes beside the user interface, as in the program; nobody gives it up.
    platform::Progress ShowProgress(const QString&) override {
        return [](qint64, qint64) {};
    }
};

class QuietNavigation : public platform::Navigation {
  public:
    bool hasScreen(const QString&) const override { return true; }

    QObject* showScreen(const QString&) override { return nullptr; }

    QObject* mainWindow() const override { return nullptr; }

    bool closeScreensBut(const QString&) override { return true; }

    void standStill() override {}

    void endProgram(int) override { qFatal("The program was to end."); }
};

class QuietRegistry : public platform::RegistryStore {
  public:
    /// The guide has been switched off.
    QString GetSetting(const QString&, const QString& section, const QString&,
                       const QString& fallback) override {
        return section == QStringLiteral("StepByStep") ? QStringLiteral("0") : fallback;
    }

    void SaveSetting(const QString&, const QString&, const QString&, const QString&) override {}
};

class QuietReports : public platform::Reports {
  public:
    platform::ReportEnd run(const platform::ReportJob&) override { return platform::ReportEnd::Done; }
};

class QuietPrinters : public platform::Printers {
  public:
    QList<platform::Printer> all() override { return {}; }

    platform::Printer defaultPrinter() override { return {}; }
};

class QuietPhoneBook : public telephony::PhoneBook {
  public:
    std::optional<modVerwaltungTelefonbuch::PhoneBookEntry> FindPhoneBookEntry(const QString&) override {
        return std::nullopt;
    }

    std::optional<modVerwaltungTelefonbuch::PhoneBookEntry>
    SearchPhoneBook(const modVerwaltungTelefonbuch::PhoneBookQuery&) override {
        return std::nullopt;
    }
};

struct QuietServices {
    QuietDialogs dialogs;
    QuietNavigation navigation;
    QuietRegistry registry;
    QuietReports reports;
    QuietPrinters printers;
    platform::QtInternet internet{{}};

    platform::Services services() { return {dialogs, navigation, registry, reports, printers, internet}; }
};

} // namespace bench
