#pragma once
#include <QString>

namespace bench {

/// An installation to measure on, with a copy of its main database for the other side.
struct Firm {
    QString title;
    QString folder;
    QString copy;
};

/// Makes what is missing of the installation in the folder, at `scale` of the large firm.
Firm prepareFirm(const QString& folder, const QString& title, double scale);

} // namespace bench
