#include "install/HiddenLine.h"
#include <QFile>
#ifdef Q_OS_UNIX
#include <termios.h>
#include <unistd.h>
#endif

namespace install {
namespace {

#ifdef Q_OS_UNIX
/// Switches the terminal's echo off for as long as it lives; a pipe has none.
class Silence {
  public:
    Silence() : m_terminal(tcgetattr(STDIN_FILENO, &m_before) == 0) {
        termios silent = m_before;
        silent.c_lflag &= ~tcflag_t(ECHO);
        if (m_terminal)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }

    ~Silence() {
        if (m_terminal)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
    }

    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

  private:
    termios m_before{};
    bool m_terminal;
};
#else
struct Silence {};
#endif

} // namespace

QString readHiddenLine() {
    [[maybe_unused]] const Silence silence;
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return {};
    QByteArray line = input.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}

} // namespace install
