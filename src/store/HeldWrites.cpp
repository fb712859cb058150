#include "store/HeldWrites.h"
#include "store/MariaConnection.h"

namespace store {

void HeldWrites::add(const QByteArray& statement) {
    m_statements.push_back({{}, statement});
    m_bytes += statement.size();
}

qint64 HeldWrites::addInsert(const QByteArray& head, const QByteArray& rows, int count) {
    if (m_statements.empty() || m_statements.back().head != head)
        m_statements.push_back({head, rows, m_nextPromise});
    else
        m_statements.back().rows += ", " + rows;
    m_bytes += rows.size();
    m_statements.back().count += count;
    m_nextPromise -= count;
    return m_nextPromise + count;
}

QList<QByteArray> HeldWrites::statements() const {
    QList<QByteArray> texts;
    for (const Statement& statement : m_statements)
        texts.append(statement.head + statement.rows);
    return texts;
}

void HeldWrites::done(const std::vector<MariaAnswer>& answers, size_t first) {
    for (size_t i = 0; i < m_statements.size(); ++i) {
        const Statement& statement = m_statements[i];
        for (int row = 0; row < statement.count; ++row)
            m_keys.insert(statement.promised - row, {answers[first + i].key, row});
    }
    clear();
}

void HeldWrites::clear() {
    m_statements.clear();
    m_bytes = 0;
}

} // namespace store
