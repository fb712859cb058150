#pragma once
#include <QByteArray>
#include <QHash>
#include <QList>
#include <utility>
#include <vector>

namespace store {

struct MariaAnswer;

/// Writes of a transaction that wait for the packet that is sent next. Inserts that follow each other become
/// one of several rows.
class HeldWrites {
  public:
    void add(const QByteArray& statement);
    /// `head` up to VALUES, `rows` with their brackets, so many. Gives a number that stands for the key of
    /// the first one, which the store will tell; resolve it by keyOf.
    qint64 addInsert(const QByteArray& head, const QByteArray& rows, int count = 1);

    bool isEmpty() const { return m_statements.empty(); }

    /// Whether it is time to send them.
    bool isLarge() const { return m_bytes > kLarge; }

    QList<QByteArray> statements() const;
    /// They were sent; `answers` are theirs, from `first` on.
    void done(const std::vector<MariaAnswer>& answers, size_t first);
    void clear();

    /// Whether a key is such a number.
    static bool isPromised(qint64 key) { return key <= kFirstPromise; }

    /// The key that it stands for, where `step` lies between the keys of two rows; 0 while that is not known.
    qint64 keyOf(qint64 promised, qint64 step) const {
        const auto [first, row] = m_keys.value(promised);
        return first == 0 ? 0 : first + row * step;
    }

  private:
    struct Statement {
        QByteArray head, rows;
        /// For the first row, and how many there are.
        qint64 promised = 0;
        int count = 0;
    };

    static constexpr qint64 kFirstPromise = -(qint64(1) << 62);
    static constexpr qsizetype kLarge = qsizetype(512) * 1024;

    std::vector<Statement> m_statements;
    qsizetype m_bytes = 0;
    qint64 m_nextPromise = kFirstPromise;
    /// The key of the first row of the insert, and the place in it.
    QHash<qint64, std::pair<qint64, int>> m_keys;
};

} // namespace store
