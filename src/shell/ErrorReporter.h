#pragma once
#include "common/Guard.h"
#include "shell/LogFile.h"
#include <QSet>
#include <exception>

namespace platform {
class Dialogs;
class Navigation;
} // namespace platform

namespace shell {

/// What happens to an exception that reached the top. It is logged and told in a plain error box. In a user's
/// own action it then ends the program. In a server's answer, a call or a timer tick the program goes on; the
/// same failure is then told only once, since a timer would bring it every minute. The failed work's own
/// transaction has been rolled back by then; work that it came in between is left alone.
///
/// Where no database server answers, the program goes on in any case; only a user is told by a box, and the
/// log once an outage.
///
/// While an error box is open, further errors are logged only.
class ErrorReporter {
  public:
    ErrorReporter(LogFile& log, platform::Dialogs& dialogs, platform::Navigation& navigation) :
        m_log(log), m_dialogs(dialogs), m_navigation(navigation) {}

    void report(common::Origin origin, const std::exception_ptr& error);

  private:
    void tell(common::Origin origin, const QString& sentence, const QString& line);

    LogFile& m_log;
    platform::Dialogs& m_dialogs;
    platform::Navigation& m_navigation;
    QSet<QString> m_told;
    bool m_telling = false;
};

} // namespace shell
