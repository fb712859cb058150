#pragma once
#include "platform/line/TelephoneLine.h"
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <vector>

/// A line under test and the calls that it has reported.
struct LineWatcher {
    struct Call {
        QString called;
        QString caller;
        friend bool operator==(const Call&, const Call&) = default;
    };

    explicit LineWatcher(std::unique_ptr<platform::BasicCAPI32> watched);
    std::unique_ptr<platform::BasicCAPI32> line;
    std::vector<Call> calls;

    QStringList callers() const;
    /// Runs the event loop until so many calls have come; false after 10 seconds.
    bool waitForCalls(size_t count) const;
};

/// A port of the loopback that is free for UDP and for TCP.
int freePort();

/// A real SIP telephone or registrar on the loopback, played by sipp with a scenario of tests/support/sip.
/// It ends with this object.
class Sipp {
  public:
    /// Calls `port`, from a free port of its own.
    static std::unique_ptr<Sipp> caller(const QString& scenario, int port, const QStringList& options = {});
    /// Listens at `port` when this returns.
    static std::unique_ptr<Sipp> registrar(const QString& scenario, int port);
    ~Sipp();

    /// Runs the event loop until the scenario has ended; true if it went as written.
    bool succeeds();
    /// What sipp complained about.
    QString errors() const;

  private:
    Sipp(const QString& scenario, const QStringList& options);
    QTemporaryDir m_folder;
    QProcess m_process;
};
