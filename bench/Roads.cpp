#include "Roads.h"
#include "orders/modBestellNummern.h"
#include "store/StoreGlobals.h"
#include "tests/support/StatementLog.h"

namespace bench {
namespace {

constexpr size_t kCompared = 20;
constexpr size_t kWalk = 100;
constexpr double kLookupAim = 2;
constexpr double kShownAim = 3;
constexpr double kBookingAim = 1.3;

} // namespace

Roads::Roads(const QString& folder, const QString& copy) :
    m_installation(folder), m_store(copy), m_raw(m_store), m_work(drawWorkload(m_store)),
    m_lists(m_store, m_work), m_shop(folder, m_store), m_lastBefore(modBestellNummern::GetLastTrxNr()) {
    m_order.prepare(m_work);
    m_order.book();
    m_raw.bookLike(OpenInstallation::handle(), m_lastBefore + 1);
    m_raw.book();
}

Roads::~Roads() {
    const QString booked = QStringLiteral(" > ") + QString::number(m_lastBefore);
    for (const QString& rows : {QStringLiteral("Bestellungen_Master WHERE lng_TrxNr") + booked,
                                QStringLiteral("Bestellungen_Details WHERE lng_TrxNrMaster") + booked,
                                QStringLiteral("Erledigt")}) {
        const QString sql = QStringLiteral("DELETE FROM tbl_Auftragswesen_") + rows;
        ConnMain.Execute(sql);
        m_store.run(sql.toUtf8().constData());
    }
}

std::vector<std::vector<Road>> Roads::groups() {
    std::vector<Road> order = compared();
    const std::vector<Road> paintedToo = painted();
    order.insert(order.end(), paintedToo.begin(), paintedToo.end());
    return {order, m_lists.roads(), m_shop.roads()};
}

std::vector<Road> Roads::compared() {
    std::vector<Road> all = lookups();
    const std::vector<Road> screen = onScreen();
    all.insert(all.end(), screen.begin(), screen.end());
    return all;
}

qint64 Roads::stepped(size_t i, qint64& at) const {
    if (i % kWalk == 0)
        at = order(i);
    return at;
}

std::vector<Road> Roads::lookups() {
    return {
        {"Call: customer and head on the order", 10, [this](size_t i) { m_order.call(caller(i).number); },
         [this](size_t i) { m_raw.call(caller(i).telefon); }, kLookupAim},
        {"Keyed code: priced line with totals", 50, [this](size_t i) { m_order.keyedCode(code(i).keyed); },
         [this](size_t i) { m_raw.keyedCode(code(i)); }, kLookupAim},
        {"Loading an order", 8, [this](size_t i) { m_order.load(order(i)); },
         [this](size_t i) { m_raw.load(order(i)); }, kLookupAim},
        {"Stepping: number of the next order", 100,
         [this](size_t i) { m_ourStep = m_order.following(stepped(i, m_ourStep)); },
         [this](size_t i) { m_rawStep = m_raw.following(stepped(i, m_rawStep)); }, kLookupAim},
        {"Stepping: next order loaded", 8,
         [this](size_t i) { m_order.load(m_ourStep = m_order.following(stepped(i, m_ourStep))); },
         [this](size_t i) { m_raw.load(m_rawStep = m_raw.following(stepped(i, m_rawStep))); }, kLookupAim},
        {"Booking of 8 lines", 2, [this](size_t) { m_order.book(); }, [this](size_t) { m_raw.book(); },
         kBookingAim},
    };
}

std::vector<Road> Roads::onScreen() {
    return {
        {"Screen: call to customer", 5, [this](size_t i) { m_screen.call(caller(i).number); },
         [this](size_t i) { m_raw.call(caller(i).telefon); }, kLookupAim},
        {"Screen: call, last orders shown", 5,
         [this](size_t i) {
             m_screen.call(caller(i).number);
             m_screen.lastOrders();
         },
         [this](size_t i) {
             m_raw.call(caller(i).telefon);
             m_raw.lastOrders();
         },
         kShownAim},
        {"Screen: keyed code to line, extras offered", 20,
         [this](size_t i) { m_screen.keyedCode(code(i).keyed); },
         [this](size_t i) {
             m_raw.keyedCode(code(i));
             m_raw.extrasOf(m_raw.lastProdukt());
         },
         kLookupAim},
    };
}

std::vector<Road> Roads::painted() {
    const auto painting = [this](std::function<void(size_t)> road) {
        return [this, road = std::move(road)](size_t i) {
            road(i);
            m_screen.paint();
        };
    };
    return {
        {"Painted: call to customer",
         1,
         [this](size_t i) {
             m_screen.call(caller(i).number);
             ScreenRoads::paintOnly();
         },
         {}},
        {"Painted: call and last orders",
         1,
         [this](size_t i) {
             m_screen.call(caller(i).number);
             ScreenRoads::paintOnly();
             m_screen.lastOrders();
             ScreenRoads::paintOnly();
         },
         {}},
        {"Painted: keyed code to line",
         5,
         painting([this](size_t i) { m_screen.keyedCode(code(i).keyed); }),
         {}},
        {"Painted: web order of 40 lines taken over",
         1,
         painting([this](size_t i) { m_screen.takeOver(caller(i).number, m_work.webOrder); }),
         {}},
        {"Painted: order loaded", 1, painting([this](size_t i) { m_screen.load(order(i)); }), {}},
    };
}

std::string Roads::differences() {
    std::string result;
    for (const Road& road : compared()) {
        m_order.prepare(m_work);
        // What is looked up once only, such as a table's columns, is no part of the road.
        road.ours(0);
        road.raw(0);
        const test::StatementLog ours(OpenInstallation::handle());
        const test::StatementLog raw(m_store.handle());
        for (size_t i = 0; i < kCompared; ++i) {
            road.ours(i);
            road.raw(i);
        }
        const auto& a = ours.statements();
        const auto& b = raw.statements();
        qsizetype at = 0;
        while (at < a.size() && at < b.size() && a[at] == b[at])
            ++at;
        if (at < a.size() || at < b.size())
            result += road.name + ", statement " + std::to_string(at + 1) + " of " +
                      std::to_string(a.size()) + "/" + std::to_string(b.size()) +
                      "\n  Tavolino: " + a.value(at).toStdString() +
                      "\n  compared: " + b.value(at).toStdString() + "\n";
    }
    return result;
}

} // namespace bench
