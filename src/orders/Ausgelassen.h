#pragma once
#include <QStringList>

namespace orders {

/// Lines of an earlier or a web order that an order kept for itself, each as "2x Pizza Margherita".
struct Ausgelassen {
    QStringList nichtImAngebot; ///< product or extra gone, or without a price
    QStringList keinPlatz;      ///< the order was full
    QStringList ohnePosition;   ///< extras that found no line above to hang under
    /// These are in the order, in the quantity of a package: theirs was refused ("Wein (abc)").
    QStringList mengeAbgelehnt;
};

/// So many lines of a kind are named; of the others it is told how many.
constexpr int kNamedAusgelassen = 20;

} // namespace orders
