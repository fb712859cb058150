#pragma once
#include "desks/MainDesks.h"
#include "desks/SystemDesk.h"
#include "platform/Services.h"
#include "shell/ScreenManager.h"
#include "store/Stations.h"
#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>

namespace Ui {
class frmMDI;
}

namespace platform {
class BasicCAPI32;
class Inet;
} // namespace platform

namespace maintenance {
class DailyCopy;
}

namespace shell {
class MenuTree;
class ServerWatch;
class WaitingCall;
struct MenuEntry;
} // namespace shell

/// The main window and the program's spine: menu, tool bar, status box, the waiting call, the timers and the
/// room for all other screens. Closing it in any way ends the program without a question.
///
/// Its start-up sequence is shell::Startup.
class frmMDI : public QMainWindow,
               public desks::StatusBox,
               public desks::CallDesk,
               public desks::Attention,
               public desks::SystemDesk {
    Q_OBJECT
  public:
    /// What the window needs of the computer.
    struct Procedures {
        std::function<void()> beep{};
        /// Whether a database server answers; called from another thread.
        std::function<bool()> askServer{};
    };

    /// The services and the registry outlive the window.
    frmMDI(const platform::Services& services, const shell::ScreenRegistry& registry, Procedures procedures);
    ~frmMDI() override;

    shell::ScreenManager& screens() { return *m_screens; }

    QAction* menuAction(const QString& name) const;

    // Status box
    void showAuftragsNummer(const QString& number) override;
    void showVorbestellungCount(qint64 count) override;
    void showKundenTotal(qint64 count) override;
    void showMessage(const QString& message) override;
    void TimerZeit_Timer();

    // Calls
    /// Starts the line and shows the way to the caller list, which keeps so many calls (0 for all); without a
    /// line the program runs on, and both stay away. The line outlives the window; null is a program without
    /// one.
    void startTelephony(platform::BasicCAPI32* line, int keptCalls);
    /// A call came in: shows its number and records it. Touches no open screen, so that a call never disturbs
    /// an order that is being keyed.
    void BasicCAPI32_IncomingCall(const QString& GerufeneNr, const QString& AnrufNr,
                                  const QString& AnrufFormat) override;
    /// Takes the waiting call: marks it and hands the number to the order screen.
    void ShowISDNNr_Click();
    bool callWaits() const;
    /// The same, when one waits.
    void takeWaitingCall();
    void callAttention() override;
    /// How many calls of the last day nobody took, on the way to their list.
    void showMissedCalls();

    /// Nothing comes in by itself any more: no call, no timer, no answer of a server.
    void standStill();

    maintenance::DailyCopy& dailyCopy() { return *m_dailyCopy; }

    // Other stations on the same database
    /// The databases are open, and nothing of them is in memory yet.
    void startStations();
    /// Looks what they have changed, and whether one of them has taken the call.
    void StationTimer_Timer();

    // Web shop
    void startWebShop();
    /// Asks the shop for its open orders; the answer comes later. Skipped while an earlier one is awaited,
    /// and without a shop.
    void InternetLinkTimer_Timer();
    /// 12 is an answer, which replaces what the list of web orders shows; a failed poll changes nothing.
    void Inet1_StateChanged(int state);
    /// Asks now, and shows the list.
    void ShowInternetListeCommand_Click();
    /// 0 none, 3 new orders wait: then the program beeps every second until they are looked at.
    void setInternetAttention(int state);

    int internetAttention() const { return m_internetAttention; }

    void TimerBeep_Timer();

    /// The pre-order alarm check. Left out while no server answers, as all that comes by itself.
    void VorbestellungTimer_Timer();

    // Updates and messages
    /// Asks the system's server what is new; the answer comes later. Nothing happens without one.
    void startSystemNews();
    void systemMessageWasRead() override;

    /// Whether users log in.
    bool loginIsOn() const;

    bool userIsLoggedIn() const { return m_userLoggedIn; }

    void setUserLoggedIn();

    /// Nobody logs in: the ways to the log-in are closed.
    void disableAnmeldung();
    /// What the user may reach: menu entries, tool bar and panels.
    void ApplyUserRights();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void setUpMenu();
    void setUpToolBar();
    void setUpPanels();
    void setUpHints();
    /// The keys that lead on, in the empty room.
    void showHints();
    bool hasTelephony() const;
    void startLine(platform::BasicCAPI32& line);
    void setUpStations();
    void takeIn(store::Topic topic);
    void followCallers();
    void followPreOrders();
    void followWebOrders();
    QString takenElsewhere(const QString& number) const;
    /// Whether the user takes a call that another station has.
    bool takesAllTheSame(const QString& station);
    /// In a moment, when the caller stands on the screen.
    void tellCallTaken(const QString& number);
    void setUpTimers();
    void toolButton(class QToolButton* button, const QString& screen);
    void choose(const shell::MenuEntry& entry);
    void openAnruferListe();
    void setUpCallPanel();
    void setUpKeys();
    void beep();
    void ordersWait(qint64 count);
    /// Of so many open ones, those that no other station has in hand.
    void webOrdersWait(qint64 open);
    /// What the key does: the panel's click, while there is one to click.
    void openWebOrders();
    void fetchWebOrders();
    void tellAboutShop(const QString& text);
    bool isFree() const;
    /// Both, as far as the user is entitled.
    void showUpdatePanels();
    void systemAnswered(int state);
    void checkForUpdates();
    void openSystemMessage();
    void setUpSystemPanels();
    void setUpServerPanel();
    void serverTurned(bool away);
    void recordCall(const QString& number);
    /// Once for an answer and for a log-in, and not while the user keys or a dialog stands.
    void tellSystemNews();
    bool mayReach(const QString& screen) const;
    bool isMenuShortcut(const class QKeyEvent& key) const;

    std::unique_ptr<Ui::frmMDI> m_ui;
    platform::Services m_services;
    Procedures m_procedures;
    shell::ScreenManager* m_screens = nullptr;
    shell::MenuTree* m_menu = nullptr;
    shell::WaitingCall* m_call = nullptr;
    std::unique_ptr<shell::ServerWatch> m_serverWatch;
    std::unique_ptr<platform::Inet> Inet1;
    maintenance::DailyCopy* m_dailyCopy = nullptr;
    QString m_pollProblem;
    int m_internetAttention = 0;
    bool m_panelIsBright = false;
    platform::BasicCAPI32* m_line = nullptr;
    int m_keptCalls = 0;
    bool m_userLoggedIn = false;
    std::unique_ptr<platform::Inet> m_startRequest;
    bool m_newsUntold = false;
    /// By the menu, before the answer came.
    bool m_newsWereTold = false;
    QTimer m_newsTimer{this};
    QTimer TimerBeep{this};
    QTimer VorbestellungTimer{this};
    QTimer InternetLinkTimer{this};
    QTimer TimerZeit{this};
    QTimer StationTimer{this};
    qint64 m_webOrders = 0;
};
