#pragma once
#include "RawStore.h"
#include "desks/WebOrder.h"
#include <QByteArray>
#include <QString>
#include <vector>

namespace bench {

/// What is looked up: drawn at random over the whole installation, the same draw in every run.
struct Workload {
    struct Caller {
        QString number;
        double telefon;
    };

    /// A short code as keyed, and as the C interface takes it.
    struct Code {
        QString keyed;
        QByteArray from, upTo, pattern;
    };

    std::vector<Caller> callers;
    std::vector<Code> codes;
    /// Booked numbers, none of them the last one.
    std::vector<qint64> orders;
    /// Forty lines: products with an extra each.
    desks::WebOrder webOrder;
};

Workload drawWorkload(RawStore& store);

} // namespace bench
