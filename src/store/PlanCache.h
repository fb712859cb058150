#pragma once
#include "store/Dialect.h"
#include <QHash>
#include <memory>
#include <vector>

namespace store {

/// The translations of an engine, one for all statements of a shape. A `Plan` is made of a translation and
/// whether it is keyed, has them as `translated` and `keyed`, and keeps what else the engine finds out.
template <class Plan> class PlanCache {
  public:
    PlanCache(const Names& names, Speech speech) : m_names(names), m_speech(speech) {}

    /// Reads the statement's literals and gives its plan.
    std::shared_ptr<Plan> planFor(const QString& sql, bool keyed) {
        readShape(sql, m_shape);
        if (const auto known = m_plans[keyed].constFind(m_shape.key); known != m_plans[keyed].constEnd())
            for (const std::shared_ptr<Plan>& plan : *known)
                if (plan->translated.fits(m_shape.literals))
                    return plan;
        auto plan = std::make_shared<Plan>(translate(sql, m_names, m_speech, keyed), keyed);
        if (m_count == kKept)
            clear();
        ++m_count;
        m_plans[keyed][m_shape.key].push_back(plan);
        return plan;
    }

    /// Of the last statement, on which they are a view.
    const std::vector<Literal>& literals() const { return m_shape.literals; }

    void clear() {
        for (auto& plans : m_plans)
            plans.clear();
        m_count = 0;
    }

  private:
    static constexpr int kKept = 256;

    const Names& m_names;
    const Speech m_speech;
    Shape m_shape;
    /// By the shape's key, plain and keyed queries apart.
    QHash<QString, std::vector<std::shared_ptr<Plan>>> m_plans[2];
    int m_count = 0;
};

} // namespace store
