#include "shell/modEinstellungenSystem.h"
#include "store/RowMark.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace modEinstellungenSystem {
namespace {

void read(const store::Field& field, QString& value) {
    value = field.text();
}

template <typename Number> void read(const store::Field& field, Number& value) {
    value = Number(field.toDouble());
}

/// Whether the setting, which holds what is stored, still is as it was shown, and so is taken over.
bool take(const Change& change) {
    const QString stored = change.setting.text();
    change.setting.take(change.text);
    if (stored == change.before || stored == change.setting.text())
        return true;
    change.setting.take(stored);
    return false;
}

QStringList save(const std::vector<Change>& changes) {
    QStringList refused;
    const store::WriteRecordset row(RsMain, u"SELECT * FROM tbl_Einstellungen_System;"_s, ConnMain);
    for (const Change& change : changes) {
        const char16_t* const column = change.setting.column;
        const auto& value = change.setting.value;
        if (!row->Eof())
            std::visit([&](auto* global) { read(row->Fields(column), *global); }, value);
        if (!take(change))
            refused << store::fieldName(QString::fromUtf16(column));
        else if (!row->Eof())
            std::visit([&](const auto* global) { row->Fields(column) = *global; }, value);
    }
    if (!row->Eof())
        row->Update();
    return refused;
}

} // namespace

QStringList SaveSystemSettings(const std::vector<Change>& changes) {
    QStringList refused;
    store::transact(ConnMain, [&] {
        refused = save(changes);
        store::tellNews(store::Topic::Settings);
    });
    Q_EMIT store::settingsNews().changed();
    return refused;
}

} // namespace modEinstellungenSystem
