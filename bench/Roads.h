#pragma once
#include "ListRoads.h"
#include "Measure.h"
#include "OurRoads.h"
#include "RawRoads.h"
#include "ShopRoads.h"

namespace bench {

/// Both sides of all roads on one installation, open at the same time on two files with the same content.
class Roads {
  public:
    Roads(const QString& folder, const QString& copy);
    /// Takes the orders back that were booked while measuring.
    ~Roads();

    /// Those of the order, then all others, which would push the order's pages out of the caches. Those that
    /// are painted only have no other side: painting belongs to no statement. The shop's come last, which add
    /// to the catalogue.
    std::vector<std::vector<Road>> groups();
    /// The roads whose statements differ between the two sides, with the difference; empty when the
    /// comparison is fair.
    std::string differences();

  private:
    const Workload::Caller& caller(size_t i) const { return m_work.callers[i % m_work.callers.size()]; }

    const Workload::Code& code(size_t i) const { return m_work.codes[i % m_work.codes.size()]; }

    qint64 order(size_t i) const { return m_work.orders[i % m_work.orders.size()]; }

    std::vector<Road> lookups();
    std::vector<Road> onScreen();
    std::vector<Road> painted();
    /// The roads whose other side is written by hand.
    std::vector<Road> compared();
    /// Steps on from order to order, and every hundred steps to another place.
    qint64 stepped(size_t i, qint64& at) const;

    OpenInstallation m_installation;
    RawStore m_store;
    RawRoads m_raw;
    Workload m_work;
    OrderRoads m_order;
    ScreenRoads m_screen;
    ListRoads m_lists;
    ShopRoads m_shop;
    qint64 m_lastBefore;
    qint64 m_ourStep = 0;
    qint64 m_rawStep = 0;
};

} // namespace bench
