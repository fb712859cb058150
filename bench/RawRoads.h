#pragma once
#include "RawStore.h"
#include "Workload.h"
#include <variant>
#include <vector>

namespace bench {

/// The roads as the same statements in the same order on the engine's C interface: prepared once, the same
/// values bound, the same columns of the same rows read. No text is built, nothing is shown or kept.
class RawRoads {
  public:
    explicit RawRoads(RawStore& store);

    /// The values that book() writes, but for the number: those of an order in the file at `handle`.
    void bookLike(sqlite3* handle, qint64 trxNr);
    void call(double telefon);
    /// The last orders of the customer called for.
    void lastOrders();
    void keyedCode(const Workload::Code& code);
    void extrasOf(qint64 produktId);
    void book();
    void load(qint64 trxNr);
    qint64 following(qint64 trxNr);

    /// Keyed last; extrasOf asks for it.
    qint64 lastProdukt() const { return m_lastProdukt; }

    /// What was read, so that no reading can be left out.
    qint64 sum() const { return m_sum; }

  private:
    qint64 lastTrxNr();
    qint64 findKunde(double telefon);
    void kundeAdresse(qint64 kundenId);
    void kundeExists(qint64 kundenId);
    void kurier(qint64 kurierId);
    void readArtikel();
    void readLine();
    void nameOf(RawStatement& statement, qint64 key);

    void take(std::string_view text) { m_sum += qint64(text.size()); }

    void take(double number) { m_sum += qint64(number); }

    void take(qint64 number) { m_sum += number; }

    struct Line {
        bool isProdukt;
        qint64 produkt, extra;
    };

    using Value = std::variant<std::nullptr_t, qint64, double, QByteArray>;
    using Row = std::vector<Value>;
    static std::vector<Row> readRows(sqlite3* handle, const char* sql, qint64 trxNr);
    static void insert(RawStatement& statement, const Row& row);

    RawStatement m_begin, m_commit, m_lastTrxNr, m_nextTrxNr, m_findKunde, m_adresse, m_exists, m_artikel,
        m_extras, m_insertHead, m_insertLine, m_finished, m_head, m_kurier, m_lines, m_code, m_produkt,
        m_extra, m_following, m_ordersOf, m_linesOf;
    std::vector<Line> m_read;
    Row m_bookedHead;
    std::vector<Row> m_bookedLines;
    qint64 m_lastKunde = 0;
    qint64 m_lastProdukt = 0;
    qint64 m_sum = 0;
};

} // namespace bench
