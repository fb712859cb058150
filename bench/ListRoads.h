#pragma once
#include "Measure.h"
#include "OurRoads.h"
#include "Replay.h"
#include "maintenance/PackageFetch.h"
#include "orders/OrderDraft.h"
#include "shell/ScreenRegistry.h"

namespace bench {

/// The roads through the screens around the order: opening each, the lists of master data, saving a product,
/// pre-orders and their alarm, web orders, callers, the draft of the order, and the statistics. What is
/// measured beside them are the same statements, replayed.
class ListRoads {
  public:
    /// The installation is open; `store` is a file with the same content, `work` outlives the roads.
    ListRoads(RawStore& store, const Workload& work);

    std::vector<Road> roads();

  private:
    /// A road beside the statements that it runs, taken down when the other side goes first; the road repeats
    /// itself after `variants` runs.
    Road replayed(const std::string& name, int runs, std::function<void(size_t)> ours, int variants = 1);
    std::vector<Road> openings();
    std::vector<Road> lists();
    std::vector<Road> customers();
    std::vector<Road> preOrders();
    std::vector<Road> webOrders();
    std::vector<Road> draft();
    std::vector<Road> statistics();

    void open(const QString& screen);
    /// One more screen of this name, which stays open from then on.
    QWidget& screen(const QString& name);

    RawStore& m_store;
    const Workload& m_work;
    QuietServices m_services;
    QuietPhoneBook m_phoneBook;
    maintenance::Publisher m_publisher;
    shell::ScreenRegistry m_registry;
    QWidget m_room;
    std::vector<std::unique_ptr<QWidget>> m_screens;
    orders::WorkingOrder m_preOrder, m_opened, m_kept, m_unkept;
    orders::OrderDraft m_draft;
};

} // namespace bench
