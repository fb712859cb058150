#pragma once
#include "platform/Services.h"
#include <QDate>
#include <QObject>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <future>

namespace maintenance {

/// Makes the day's copy some time after the first start of a day, off everybody's way: in a thread that gives
/// way to all others, and in small pieces. Told in the status box is only that it has failed for three days;
/// each failure stands in the log. Of several stations on
/// one database one makes it.
class DailyCopy : public QObject {
    Q_OBJECT
  public:
    /// The services outlive it.
    explicit DailyCopy(const platform::Services& services, QObject* parent = nullptr);
    ~DailyCopy() override;

    /// Once, when the program stands.
    void startLater(std::chrono::milliseconds delay);
    /// No copy is made any more, and what was begun of one goes. Waits until it has gone, or so
    /// long: one that stands on a dead disk keeps the database open, and whoever wants it alone is refused.
    void giveUp(std::chrono::milliseconds patience = std::chrono::seconds(5));

  Q_SIGNALS:
    /// The copy stands, or has failed.
    void done();

  private:
    void begin();
    /// The task is done for today, or another station may try.
    void settle(bool isThere);
    void work(QDate today);
    void later(const std::function<void()>& act);
    void finish();
    void remember(const QString& failure);

    platform::Services m_services;
    QTimer m_timer{this};
    std::atomic<bool> m_givenUp = false;
    std::future<void> m_work;
    std::exception_ptr m_failure;
    QString m_task;
};

} // namespace maintenance
