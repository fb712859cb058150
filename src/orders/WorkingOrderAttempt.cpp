// An order that a failing store finds half changed is put back.
#include "orders/WorkingOrder.h"
#include <exception>

namespace orders {

struct WorkingOrder::State {
    platform::CellTable::Content head, lines;
    qint64 kundenId, kurierId;
    std::optional<desks::WebOrderId> webBestellung;
    QString kennung, address;
    bool addressShown, asRead;
    OrderButtons buttons;
};

WorkingOrder::State WorkingOrder::state() const {
    return {BestellungDetailsGrid.content(),
            BestellungGrid.content(),
            lng_KundenID,
            lng_KurierID,
            webBestellung,
            m_kennung,
            m_address,
            m_addressShown,
            m_asRead,
            m_buttons};
}

void WorkingOrder::putBack(const State& before) {
    suche = SucheModus::Keyed;
    m_kennung = before.kennung;
    lng_KundenID = before.kundenId;
    lng_KurierID = before.kurierId;
    webBestellung = before.webBestellung;
    BestellungDetailsGrid.putBack(before.head);
    BestellungGrid.putBack(before.lines);
    CalculateTotalBestellung();
    setButtons(before.buttons);
    m_address = before.address;
    m_addressShown = before.addressShown;
    Q_EMIT KundenAdresseChanged();
    m_asRead = before.asRead;
}

WorkingOrder::Attempt::Attempt(WorkingOrder& order) :
    m_order(order), m_exceptions(std::uncaught_exceptions()) {
    if (order.m_attempting)
        return;
    m_before = std::make_unique<State>(order.state());
    order.m_attempting = true;
}

WorkingOrder::Attempt::~Attempt() {
    if (!m_before)
        return;
    m_order.m_attempting = false;
    if (std::uncaught_exceptions() > m_exceptions)
        m_order.putBack(*m_before);
}

} // namespace orders
