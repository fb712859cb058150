#include "store/StreamedRows.h"
#include "common/RunTimeError.h"

namespace store {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuse() {
    throw common::RunTimeError(common::kStoreFailure, u"Diese Zeilen können nur vorwärts gelesen werden."_s);
}

} // namespace

bool StreamedRows::hasRow(int row) {
    if (row < m_row)
        refuse();
    for (; m_row < row && m_there; ++m_row)
        m_there = m_cursor->next();
    return m_there;
}

void StreamedRows::sort(const QString&, bool) {
    refuse();
}

} // namespace store
