#pragma once
#include <QString>
#include <QStringList>
#include <vector>

namespace platform {

/// What a picture shows: the same rows as the table beside it.
struct Chart {
    enum Kind {
        Columns, ///< periods along the axis, series side by side
        Ranked,  ///< horizontal bars, the largest first; of a long list the smallest are summed up in one
        Line     ///< values over time, one point a label
    };

    struct Series {
        QString name;
        std::vector<double> values;
    };

    QString title{};
    QString unit{};                          ///< "CHF"; "" for counts
    QString form = QStringLiteral("#,0.00"); ///< of the exact value, see common::formatNumber
    Kind kind = Columns;
    QStringList labels{};
    std::vector<Series> series{}; ///< one or two; each as long as labels

    /// How many labels the last one stands for, where arranged() summed some up.
    size_t summedUp = 0;

    bool isEmpty() const { return labels.isEmpty() || series.empty(); }

    /// In the order in which it is drawn. Of a ranked one at most 26 labels are left: those behind the 25
    /// largest of the first series become "Übrige (n)", the last one.
    Chart arranged() const;

    double value(size_t number, size_t index) const { return series[number].values[index]; }

    /// The exact value with its unit: "1'234.50 CHF".
    QString valueText(double value) const;
    /// What is told of one value: its label, series and exact value, in two lines.
    QString note(size_t number, size_t index) const;
};

} // namespace platform
