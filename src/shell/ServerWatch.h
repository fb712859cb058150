#pragma once
#include <QObject>
#include <QTimer>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace shell {

/// Waits for a database server that is away: asks each second, in a thread of its own, and only then. It is
/// the listener of store::onServerTurn; one at a time.
class ServerWatch : public QObject {
    Q_OBJECT
  public:
    /// `ask` may take some seconds; empty asks the server of the main database.
    explicit ServerWatch(std::function<bool()> ask, QObject* parent = nullptr);
    ~ServerWatch() override;

  Q_SIGNALS:
    void turned(bool away);

  private:
    void turn(bool away);
    void ask();
    void answered();

    /// Shared with the thread, which the end of the program does not wait for.
    struct Asking {
        std::function<bool()> ask;
        std::atomic<bool> over = false;
        bool answers = false;
    };

    const std::function<bool()> m_ask;
    std::shared_ptr<Asking> m_asking;
    QTimer m_timer{this};
};

} // namespace shell
