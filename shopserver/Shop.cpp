#include "shopserver/Shop.h"
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

QString dataFile(const Places& where, const QString& name) {
    if (!QDir().exists(where.data)) {
        QDir().mkpath(where.data);
        QFile::setPermissions(where.data, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    return where.data + u'/' + name;
}

} // namespace

QString Places::file(const QString& name) const {
    return QDir(root + u'/' + folder).absoluteFilePath(name);
}

Shop::Shop(const Places& where) :
    places(where), catalogue(where.file(u"TavolinoShopDB.asp"_s), dataFile(where, u"catalogue.db"_s)),
    orders(dataFile(where, u"orders.db"_s)), messages(dataFile(where, u"messages.db"_s)) {
}

} // namespace shop
