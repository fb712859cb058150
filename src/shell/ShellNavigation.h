#pragma once
#include "platform/Navigation.h"
#include <functional>

class frmMDI;

namespace shell {

/// Leads from screen to screen by way of the main window.
class ShellNavigation : public platform::Navigation {
  public:
    explicit ShellNavigation(std::function<void(int exitCode)> end) : m_end(std::move(end)) {}

    /// Null before the main window exists and after it is gone; every way then leads nowhere.
    void setMainWindow(frmMDI* window) { m_window = window; }

    bool hasScreen(const QString& screen) const override;
    void showScreen(const QString& screen, bool front) override;
    void openOrderForNumber(const QString& number) override;
    void openCustomer(qint64 customerId) override;
    void openBooking(qint64 trxNr) override;
    void openVorbestellung(qint64 trxNr) override;
    void showVorbestellung(qint64 trxNr) override;
    void showVorbestellungAlarm(qint64 trxNr) override;
    void showNextTrxNr(const QString& number) override;
    void showVorbestellungCount(qint64 count) override;
    void showKundenTotal(qint64 count) override;
    void incomingCall(const QString& GerufeneNr, const QString& AnrufNr, const QString& AnrufFormat) override;

    void endProgram(int exitCode) override { m_end(exitCode); }

  private:
    template <typename Desk> Desk* desk(const QString& screen);

    frmMDI* m_window = nullptr;
    std::function<void(int)> m_end;
};

} // namespace shell
