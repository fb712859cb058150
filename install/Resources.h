#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace install {

/// What the installation brings along, compiled in: the schema, the first rows, the pictures. `name` is the
/// path below install/, such as "rows/postcodes.csv". An unknown name is a mistake of ours and throws.
QByteArray resource(const QString& name);

/// The rows of a table of texts: fields parted by ";", one row a line, lines that begin with "#" left out.
QVector<QStringList> resourceTable(const QString& name);

} // namespace install
