#pragma once
#include "Measure.h"
#include "OurRoads.h"
#include "RawRoads.h"

namespace bench {

/// Both sides of all roads on one installation, open at the same time on two files with the same content.
class Roads {
  public:
    Roads(const QString& folder, const QString& copy);
    /// Takes the orders back that were booked while measuring.
    ~Roads();

    /// With the window's, which are measured by themselves: painting belongs to no statement.
    std::vector<Road> roads();
    std::vector<Road> painted();
    /// The roads whose statements differ between the two sides, with the difference; empty when the
    /// comparison is fair.
    std::string differences();

  private:
    const Workload::Caller& caller(size_t i) const { return m_work.callers[i % m_work.callers.size()]; }

    const Workload::Code& code(size_t i) const { return m_work.codes[i % m_work.codes.size()]; }

    qint64 order(size_t i) const { return m_work.orders[i % m_work.orders.size()]; }

    OpenInstallation m_installation;
    RawStore m_store;
    RawRoads m_raw;
    Workload m_work;
    OrderRoads m_order;
    ScreenRoads m_screen;
    qint64 m_lastBefore;
};

} // namespace bench
