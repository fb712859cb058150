#include "store/SystemSettings.h"
#include "common/Bounds.h"
#include "common/Convert.h"
#include "common/Version.h"
#include "common/modFunctions.h"
#include "store/StoreGlobals.h"
#include <algorithm>

qint32 SysEditierungBestellungen, SysAnmeldungBenutzer;
QString SysPrinter1Name, SysPrinter2Name;
qint32 SysPrinter1Copies, SysPrinter2Copies;
qint16 SysPrinter1Status, SysPrinter2Status, SysVorlageBestellung;
QString SysWerbetext;
double SysMWStSatz1, SysMWStSatz2, SysMWStSatz3;
QString SysVATNummer;
qint16 SysNoVATStatus;
double SysFiktiverTag;
qint16 SysStandardLieferzeit;
qint32 SysInitTrxNr;
qint16 SysVorbestellungAutomatischStatus, SysVorbestellungAutomatischZeit;
qint16 SysVorbestellungBuchungStatus, SysVorbestellungBuchungZeit;
QString SysCurrency, SysSprache;
qint16 UserAdministrator, UserEinstellungen, UserKundenStatistik, UserUmsatzStatistik, UserBuchungsjournal,
    UserOnlineShop, UserDatensicherung;

namespace store {

using namespace Qt::StringLiterals;
using common::kProgramVersion;
using common::Version;

namespace {

void read(const Setting& setting) {
    const Field field = RsMain.Fields(setting.column);
    if (auto* const* text = std::get_if<QString*>(&setting.value))
        **text = modFunctions::NullToEmpty(field.Value());
    else if (auto* const* small = std::get_if<qint16*>(&setting.value))
        **small = qint16(field.toLong());
    else if (auto* const* large = std::get_if<qint32*>(&setting.value))
        **large = qint32(field.toLong());
    else
        *std::get<double*>(setting.value) = field.toDouble();
    // Only one decimal of a rate survives, the firm's practice.
    if (setting.kind == SettingKind::Rate)
        setting.take(setting.text());
}

Version readRow() {
    for (const Setting& setting : settings())
        read(setting);
    return {RsMain.Fields(u"lng_SoftwareVersion_Major").toLong(),
            RsMain.Fields(u"lng_SoftwareVersion_Minor").toLong(),
            RsMain.Fields(u"lng_SoftwareVersion_Revision").toLong()};
}

double numberOf(const Setting& setting) {
    if (auto* const* small = std::get_if<qint16*>(&setting.value))
        return **small;
    if (auto* const* large = std::get_if<qint32*>(&setting.value))
        return **large;
    return *std::get<double*>(setting.value);
}

void setNumber(const Setting& setting, double number) {
    if (auto* const* small = std::get_if<qint16*>(&setting.value))
        **small = qint16(number);
    else if (auto* const* large = std::get_if<qint32*>(&setting.value))
        **large = qint32(number);
    else
        *std::get<double*>(setting.value) = number;
}

void SaveSoftwareVersion() {
    ConnMain.Execute(
        u"UPDATE tbl_Einstellungen_System SET lng_SoftwareVersion_Major = %1, lng_SoftwareVersion_Minor = "
        u"%2, lng_SoftwareVersion_Revision = %3"_s.arg(kProgramVersion.major)
            .arg(kProgramVersion.minor)
            .arg(kProgramVersion.revision));
}

} // namespace

const std::vector<Setting>& settings() {
    using enum SettingKind;
    static const std::vector<Setting> table = {
        {u"txt_Printer1_Name", u"combo_Printer1_Name", Printer, &SysPrinter1Name},
        {u"lng_Printer1_Copies", u"combo_Printer1_Copies", TwoDigits, &SysPrinter1Copies},
        {u"lng_Printer1_Status", u"check_Printer1_Status", Flag, &SysPrinter1Status},
        {u"txt_Printer2_Name", u"combo_Printer2_Name", Printer, &SysPrinter2Name},
        {u"lng_Printer2_Copies", u"combo_Printer2_Copies", TwoDigits, &SysPrinter2Copies},
        {u"lng_Printer2_Status", u"check_Printer2_Status", Flag, &SysPrinter2Status},
        {u"lng_VorlageBestellung", u"combo_DruckVorlage", Position, &SysVorlageBestellung},
        {u"txt_Werbetext", u"txt_Werbetext", Text, &SysWerbetext},
        {u"dbl_MWStSatz1", u"txt_MWST1", Rate, &SysMWStSatz1},
        {u"dbl_MWStSatz3", u"txt_MWST3", Rate, &SysMWStSatz3},
        {u"txt_VATNummer", u"txt_VATNummer", Text, &SysVATNummer},
        {u"lng_NoVATStatus", u"check_NoVAT", Flag, &SysNoVATStatus},
        {u"lng_FiktiverTag", u"combo_FiktiverTag", Hour, &SysFiktiverTag},
        {u"lng_StandardLieferzeit", u"combo_StandardLieferzeit", Number, &SysStandardLieferzeit},
        {u"lng_VorbestellungAutomatischStatus", u"check_VorbestellungAutomatisch", Flag,
         &SysVorbestellungAutomatischStatus},
        {u"lng_VorbestellungAutomatischZeit", u"combo_VorbestellungAutomatisch", TwoDigits,
         &SysVorbestellungAutomatischZeit},
        {u"lng_VorbestellungBuchungStatus", u"check_VorbestellungBuchung", Flag,
         &SysVorbestellungBuchungStatus},
        {u"lng_VorbestellungBuchungZeit", u"combo_VorbestellungBuchung", TwoDigits,
         &SysVorbestellungBuchungZeit},
        {u"lng_InitTrxNr", u"txt_TrxNr", Typed, &SysInitTrxNr},
        {u"txt_Currency", u"combo_Currency", Word, &SysCurrency},
        {u"txt_Sprache", u"combo_Language", Word, &SysSprache},
        {u"lng_EditierungBestellungen", u"check_EditierungBestellungen", Flag, &SysEditierungBestellungen},
        {u"lng_AnmeldungBenutzer", u"check_AnmeldungUser", Flag, &SysAnmeldungBenutzer},
    };
    return table;
}

QString Setting::text() const {
    switch (kind) {
    case SettingKind::Text:
    case SettingKind::Word:
    case SettingKind::Printer:
        return *std::get<QString*>(value);
    case SettingKind::Flag:
        return numberOf(*this) != 0 ? u"1"_s : u"0"_s;
    case SettingKind::TwoDigits:
        return common::formatNumber(numberOf(*this), u"00");
    case SettingKind::Rate:
        return common::formatNumber(numberOf(*this), u"0.0");
    case SettingKind::Hour:
        return QString::number(FiktiverTagStunde());
    default:
        return common::formatNumber(numberOf(*this), u"0");
    }
}

bool Setting::accepts(const QString& text) const {
    if (std::holds_alternative<QString*>(value))
        return true;
    if (kind == SettingKind::Rate) {
        const auto rate = common::parseNumber(text);
        return rate && common::isRate(*rate);
    }
    bool whole = false;
    const qint32 number = text.trimmed().toInt(&whole);
    return whole && number >= 0;
}

void Setting::take(const QString& text) const {
    if (auto* const* own = std::get_if<QString*>(&value)) {
        **own = text;
        return;
    }
    if (!accepts(text))
        return;
    const double number = common::parseNumber(text).value_or(0);
    constexpr double kHoursOfADay = 24.0;
    if (kind == SettingKind::Rate)
        setNumber(*this, common::formatNumber(number, u"0.0").toDouble());
    else
        setNumber(*this, kind == SettingKind::Hour ? number / kHoursOfADay : number);
}

int FiktiverTagStunde() {
    // Cut and not rounded, but a stored 0.958333 is 23 and not 22.
    constexpr double kRoundingOfProduct = 1e-3;
    return std::clamp(int(SysFiktiverTag * 24.0 + kRoundingOfProduct), 0, 23);
}

SettingsNews& settingsNews() {
    static SettingsNews news;
    return news;
}

void LoadSystemSettings() {
    Version stored = kProgramVersion;
    {
        const OpenRecordset rows(RsMain, u"SELECT * FROM tbl_Einstellungen_System;"_s, ConnMain);
        if (!rows->Eof())
            stored = readRow();
    }
    if (!common::IsVersionCurrent(stored))
        SaveSoftwareVersion();
}

} // namespace store
