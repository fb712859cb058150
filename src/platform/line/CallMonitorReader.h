#pragma once
#include <QByteArray>
#include <QString>
#include <vector>

namespace platform {

/// Cuts the byte stream of a call monitor into lines and picks the incoming calls out of them:
/// `date;RING;id;caller;called;line;`. Other events (CALL, CONNECT, DISCONNECT) and anything else are passed
/// over.
class CallMonitorReader {
  public:
    struct Call {
        QString called;
        QString caller; ///< as delivered, "" when suppressed
    };

    /// Takes the next piece of the stream, which may hold parts of lines, and gives the calls that it
    /// completes. A line of more than 1000 bytes is dropped up to its end.
    std::vector<Call> feed(const QByteArray& piece);
    /// Forgets an unfinished line, for a new connection.
    void reset();

  private:
    QByteArray m_line;
    bool m_isTooLong = false;
};

} // namespace platform
