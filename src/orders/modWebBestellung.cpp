#include "orders/modWebBestellung.h"
#include "masterdata/modProdukte.h"

using namespace Qt::StringLiterals;
using desks::WebLine;
using orders::Ausgelassen;
using orders::Col;
using orders::WorkingOrder;

namespace modWebBestellung {
namespace {

/// What a server wrote, as a piece of one line.
QString plain(QString text, int most) {
    text.removeIf([](QChar c) {
        // A format character may turn what stands behind it around.
        return (c.category() == QChar::Other_Control && !c.isSpace()) || c.category() == QChar::Other_Format;
    });
    return text.simplified().left(most);
}

QString nameOf(const WebLine& line) {
    constexpr int kLongest = 60;
    QString name = line.isProdukt ? modProdukte::GetProduktName(line.id) : plain(line.bezeichnung, kLongest);
    if (!name.isEmpty())
        return name;
    return (line.isProdukt ? u"Produkt %1"_s : u"Extra %1"_s).arg(line.id);
}

QString anzahlOf(const WebLine& line) {
    constexpr int kLongest = 12;
    return plain(line.anzahl, kLongest);
}

class Keying {
  public:
    explicit Keying(WorkingOrder& order) : m_order(order), m_grid(order.BestellungGrid) {}

    void key(const WebLine& line) {
        QStringList* const leftOut = line.isProdukt || !m_withProdukt ? put(m_row, line) : m_withProdukt;
        if (line.isProdukt)
            m_withProdukt = leftOut;
        if (leftOut) {
            name(*leftOut, line);
            leaveOut();
        }
        ++m_row;
    }

    /// From the last row on: a gap would catch the next extra that is picked.
    Ausgelassen finish() {
        for (auto row = m_empty.rbegin(); row != m_empty.rend(); ++row)
            m_order.RemoveLine(*row);
        m_order.suche = orders::SucheModus::Keyed;
        return m_out;
    }

  private:
    bool isFree(int row) const { return m_grid.text(row, Col::Ccy).isEmpty(); }

    /// Gives where the line is told instead.
    QStringList* put(int row, const WebLine& line) {
        if (row >= m_grid.rows() || !isFree(row))
            return &m_out.keinPlatz;
        const bool mayHang = row > 0 && !isFree(row - 1);
        if (line.isProdukt)
            m_order.PutProdukt(row, m_produkt = line.id, modProdukte::GetProduktKurzzeichen(line.id));
        else
            m_order.PutExtraByKey(row, m_produkt, line.id, line.bezeichnung);
        if (isFree(row))
            return line.isProdukt || mayHang ? &m_out.nichtImAngebot : &m_out.ohnePosition;
        if (!m_grid.endEdit(row, Col::Anzahl, line.anzahl))
            m_out.mengeAbgelehnt << nameOf(line) + u" ("_s + anzahlOf(line) + u')';
        m_grid.setCell(row, Col::AnzahlIntern, m_grid.cell(row, Col::Anzahl));
        return nullptr;
    }

    /// Half a line would be stored without a price.
    void leaveOut() {
        if (m_row >= m_grid.rows() || !isFree(m_row))
            return;
        m_grid.clearRow(m_row);
        m_empty.push_back(m_row);
    }

    /// An answer may hold very many lines, and each name is a lookup.
    static void name(QStringList& lines, const WebLine& line) {
        const QString anzahl = anzahlOf(line);
        const QString what = lines.size() < orders::kNamedAusgelassen ? nameOf(line) : QString();
        lines << (anzahl.isEmpty() ? what : anzahl + u"x "_s + what);
    }

    WorkingOrder& m_order;
    platform::CellTable& m_grid;
    Ausgelassen m_out;
    /// An extra goes where its product went.
    QStringList* m_withProdukt = nullptr;
    qint64 m_produkt = 0;
    int m_row = 0;
    std::vector<int> m_empty;
};

} // namespace

Ausgelassen UebernehmeWebBestellung(WorkingOrder& order, const desks::WebOrder& web) {
    const WorkingOrder::Attempt attempt(order);
    if (!web.lines.empty())
        order.webBestellung = web.id;
    Keying keying(order);
    for (const WebLine& line : web.lines)
        keying.key(line);
    return keying.finish();
}

} // namespace modWebBestellung
