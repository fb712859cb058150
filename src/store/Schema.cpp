#include "store/Schema.h"
#include "common/RunTimeError.h"
#include <QFile>
#include <QRegularExpression>

// Resources of a static library are linked only when they are asked for, outside of any namespace.
static void initResources() {
    Q_INIT_RESOURCE(store);
}

namespace store {

using namespace Qt::StringLiterals;

QString definitions(Database database, Definitions which) {
    static const QStringList names = {u"DBTavolino"_s, u"DBTavolinoPhone"_s, u"DB_PRINT_Tavolino"_s,
                                      u"DBOnlineShop"_s};
    static const QStringList parts = {u"tables"_s, u"indexes"_s, u"views"_s};
    initResources();
    QFile script(u":/store/schema/%1.%2.sql"_s.arg(names[int(database)], parts[int(which)]));
    const bool isThere = script.open(QIODevice::ReadOnly);
    if (!isThere && which == Definitions::Tables)
        throw common::RunTimeError(common::kFileNotFound, u"Die Installation ist unvollständig."_s,
                                   script.fileName());
    return isThere ? QString::fromUtf8(script.readAll()) : QString();
}

std::vector<SchemaTable> tablesOf(Database database) {
    static const QRegularExpression table(u"CREATE TABLE (\\w+) \\((.*?)\\n\\);"_s,
                                          QRegularExpression::DotMatchesEverythingOption |
                                              QRegularExpression::UseUnicodePropertiesOption);
    std::vector<SchemaTable> tables;
    const QString script = definitions(database, Definitions::Tables);
    for (const QRegularExpressionMatch& match : table.globalMatch(script))
        tables.push_back({match.captured(1), match.capturedView(2).contains(u"PRIMARY KEY"_s)});
    return tables;
}

QStringList viewsOf(Database database) {
    static const QRegularExpression view(u"CREATE VIEW (\\w+)"_s);
    QStringList views;
    const QString script = definitions(database, Definitions::Views);
    for (const QRegularExpressionMatch& match : view.globalMatch(script))
        views.append(match.captured(1));
    return views;
}

} // namespace store
