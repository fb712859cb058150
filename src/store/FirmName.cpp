#include "store/FirmName.h"
#include "store/StoreGlobals.h"
#include <QSettings>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace store {

QString firmName() {
    const QSettings file(appPath() + u"/tavolino.ini"_s, QSettings::IniFormat);
    // A comma outside quotes divides a list.
    return file.value(u"Firma/Name"_s).toStringList().join(u", "_s);
}

} // namespace store
