#pragma once
#include "orders/WorkingOrder.h"
#include <QObject>
#include <QTimer>

namespace orders {

/// Keeps the order that is being keyed on disk, so that a crash, a power cut or an error that ends the
/// program loses none of it: customer, head and lines, exactly the cells. It is written shortly after a
/// change, off the way of the keystroke, replaced whole or not at all. The file holds personal data: only its
/// owner reads it, and it goes as soon as the order is booked, cleaned or declined.
class OrderDraft : public QObject {
    Q_OBJECT
  public:
    /// Where an installation keeps it.
    static QString defaultFile();

    /// Follows `order`, which outlives the draft. What cannot be written is told in the log only: the order
    /// itself can still be booked.
    OrderDraft(WorkingOrder& order, QString file, QObject* parent = nullptr);

    /// Writes a pending change now, or removes the file when the order is empty. To be called before the
    /// order is stored: an older draft of it would look like another order.
    void flush();
    /// Nothing is kept of the order.
    void forget();

    /// Whether `file` holds an order to go on with. One that stands stored as it is (booked in the last
    /// moment, or only looked at) is dropped, so that it is not booked twice; a damaged file or one of
    /// another version is put aside with a line in the log.
    static bool waits(const QString& file);
    /// Brings the cells back. False when there is nothing to bring back.
    static bool restore(const QString& file, WorkingOrder& order);
    static void decline(const QString& file);

  private:
    void schedule();
    void write();

    WorkingOrder& m_order;
    const QString m_file;
    QTimer m_timer{this};
};

} // namespace orders
