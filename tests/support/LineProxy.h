#pragma once
#include <QByteArray>
#include <QThread>

namespace test {

/// A line to a server on loopback that is slow, dead or cut, as told. It works in a thread of its own, since
/// its client waits in the test's. What is said on it is seen without TLS only.
class LineProxy {
  public:
    explicit LineProxy(int serverPort);
    ~LineProxy();
    LineProxy(const LineProxy&) = delete;
    LineProxy& operator=(const LineProxy&) = delete;

    int port() const;

    /// In milliseconds, each way.
    void setDelay(int delay);
    /// How often the client has spoken after the server did, since the last call.
    int takeRoundTrips();

    void cut(); ///< all connections, now
    enum class Cut { BeforeServer, BeforeAnswer };
    /// Cuts the next connection on which the client says this, once. BeforeAnswer: the server gets it and
    /// carries it out, and only its answer is lost.
    void cutAt(const QByteArray& text, Cut moment = Cut::BeforeAnswer);
    bool hasCut() const; ///< since the last cutAt()

    /// Connections are taken, and nothing is passed on until it is told to speak again.
    void setSilent(bool silent);
    /// Connections are refused, and the present ones cut.
    void setClosed(bool closed);

  private:
    class Listener;

    template <typename Work> void inThread(Work work) const;

    QThread m_thread;
    Listener* m_listener; ///< ends with the thread
};

} // namespace test
