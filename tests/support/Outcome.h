#pragma once
#include "common/RunTimeError.h"
#include <QByteArray>
#include <QFile>
#include <functional>

namespace test {

/// Number of the run-time error that `act` throws; 0 for none.
inline int errorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const common::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

/// Of the file; empty when it cannot be read.
inline QByteArray bytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace test
