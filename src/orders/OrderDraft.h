#pragma once
#include "orders/WorkingOrder.h"
#include <QObject>
#include <QTimer>
#include <functional>

namespace common {
class RunTimeError;
}

namespace orders {

/// Keeps the order that is being keyed on disk, so that a crash, a power cut or an error that ends the
/// program loses none of it: customer, head and lines, exactly the cells. It is written shortly after a
/// change, off the way of the keystroke, replaced whole or not at all. The file holds personal data: only its
/// owner reads it, and it goes as soon as the order is stored, cleaned or declined.
///
/// An order that is given up unfinished (cleaned, its screen closed, another one taken instead) stays in a
/// second file and can be taken back until the next one is given up; never one that was stored, nor a change
/// of one. It goes half a day later, at a start.
///
/// Whether an order was stored is told by its identity (WorkingOrder::Kennung) and not by its looks. An order
/// that was read from the store has no draft until something of it is changed.
class OrderDraft : public QObject {
    Q_OBJECT
  public:
    /// While one lives, an order whose screen closes stays a draft, as at any end of the program: the next
    /// start offers it. One at a time.
    class Keeping {
      public:
        Keeping();
        ~Keeping();
        Keeping(const Keeping&) = delete;
        Keeping& operator=(const Keeping&) = delete;
        /// The program goes on: what closed meanwhile is given up after all.
        void giveUp();

      private:
        friend class OrderDraft;
        std::function<void()> m_giveUp;
    };

    /// Where an installation keeps it.
    static QString defaultFile();

    /// Follows `order`, which outlives the draft.
    OrderDraft(WorkingOrder& order, QString file, QObject* parent = nullptr);

    /// Writes a pending change now, or removes the file when the order is empty. To be called before the
    /// order is stored: should that fail, the program ends.
    void flush();
    /// The order stands stored or deleted: nothing is kept of it any more, whatever still happens to its
    /// cells.
    void finish();
    /// The order is given up unfinished. What clears the order comes here by itself.
    void giveUp();
    bool canTakeBack() const;
    /// Brings the order back that was given up last; one on the screen is given up for it. False when there
    /// is none, and nothing has changed then.
    bool takeBack();

    /// What a start finds.
    struct Found {
        bool order = false; ///< one to go on with, see restore
        QString putAside;   ///< where a file went that holds no order, or one of another version
    };

    /// An order that was stored in the last moment is dropped, so that it is not stored twice.
    static Found look(const QString& file);
    /// Brings the cells back. False when there is nothing to bring back.
    static bool restore(const QString& file, WorkingOrder& order);
    static void decline(const QString& file);
    /// Whatever is kept of any order goes.
    static void forgetAll(const QString& file);

  Q_SIGNALS:
    /// The order is not kept any more from here on (the last whole draft stays), or is kept again. Told once
    /// at each turn; the order itself can still be booked.
    void failed(const QString& sentence);
    void mended();
    void canTakeBackChanged(bool can);

  private:
    void schedule();
    bool isWorthKeeping() const;
    void forget();
    void write();
    void tellFailure(const common::RunTimeError& error);
    void tellMended();

    WorkingOrder& m_order;
    const QString m_file;
    QTimer m_timer{this};
    QString m_finished; ///< the identity of an order that was finished
    bool m_failing = false;
};

} // namespace orders
