#include "common/RunTimeError.h"
#include "platform/report/ReportDocument.h"
#include "platform/report/ReportTemplate.h"
#include "support/CupsServer.h"
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::ReportData;
using platform::ReportTemplate;

namespace {

class ReportTemplateTest : public testing::Test {
  protected:
    QString write(const QByteArray& text) {
        const QString path = m_folder.filePath(u"rep_test.rpt"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    QString fill(const QByteArray& text, const ReportData& data) {
        return ReportTemplate(write(text)).fill(data).html;
    }

    QTemporaryDir m_folder;
};

const ReportData& oneLine() {
    static const ReportData data{{{u"T"_s,
                                   {{{u"Preis/Stk"_s, u"16.50"_s},
                                     {u"PreisOhneMWSt/Total"_s, u"32.16"_s},
                                     {u"MWSt-Nr"_s, u"CHE-1"_s},
                                     {u"Zwei Worte"_s, u"ja"_s},
                                     {u"Stückelung"_s, u"Dose"_s},
                                     {u"Anzahl"_s, u"2.00"_s},
                                     {u"Halb"_s, u"0.50"_s},
                                     {u"Text"_s, u"v1.0"_s},
                                     {u"Null"_s, u"0.00"_s},
                                     {u"Leer"_s, u""_s},
                                     {u"Böse"_s, u"<b>\"R&D\"</b> {{Anzahl}}"_s},
                                     {u"Adresse"_s, u"Eins\r\nZwei\nDrei\rVier\r\n"_s}}}}}};
    return data;
}

} // namespace

TEST_F(ReportTemplateTest, FillsColumnsOfAnyName) {
    const std::tuple<const char*, const char*> cases[] = {
        {"{{Preis/Stk}}", "16.50"},
        {"{{PreisOhneMWSt/Total}}", "32.16"},
        {"{{MWSt-Nr}}", "CHE-1"},
        {"{{ Zwei Worte }}", "ja"},
        {"{{Stückelung}}", "Dose"},
        {"{{#Preis/Stk}}da{{/Preis/Stk}}", "da"},
        {"{{^Preis/Stk}}leer{{/Preis/Stk}}", ""},
        {"{{#Leer}}da{{/Leer}}{{^Leer}}leer{{/Leer}}", "leer"},
        {"{{#Null}}da{{/Null}}{{#Null?}}mehr{{/Null?}}", "da"},
        {"{{#Halb?}}mehr{{/Halb?}}{{#Leer?}}mehr{{/Leer?}}", "mehr"},
        {"{{Anzahl:kurz}} {{Halb:kurz}} {{Null:kurz}} {{Text:kurz}}", "2 0.5 0 v1.0"},
        {"{{Böse}}", "&lt;b&gt;&quot;R&amp;D&quot;&lt;/b&gt; {{Anzahl}}"},
        {"{{Adresse}}", "Eins<br>Zwei<br>Drei<br>Vier"},
    };

    for (const auto& [tag, expected] : cases) {
        const QByteArray text = QByteArray("{{#T}}") + tag + "{{/T}}";
        EXPECT_EQ(fill(text, oneLine()).toStdString(), expected) << tag;
    }
}

TEST_F(ReportTemplateTest, TellsItsTablesItsPaperAndTheFirstValue) {
    const ReportData gapFirst{
        {{u"T"_s, {{{u"CCy"_s, u""_s}}, {{u"CCy"_s, u"CHF"_s}}, {{u"CCy"_s, u"EUR"_s}}}}, {u"Kein"_s, {}}}};
    EXPECT_EQ(fill("{{T:erste.CCy}}|{{Kein:erste.CCy}}|{{#Kein}}x{{/Kein}}", gapFirst), u"CHF||"_s);
    const ReportTemplate report(
        write("<meta name=\"Fuss\" content=\"{{Z:erste.Nr}}\">{{#A}}{{#x?}}1{{/x?}}{{/A}}{{^ B }}{{/B}}"));
    EXPECT_EQ(report.sections(), (QStringList{u"A"_s, u"x?"_s, u"B"_s, u"Z"_s}));
    for (const auto& [paper, size] : {std::pair{"A4", QSizeF(210, 297)},
                                      {"A4 quer", QSizeF(297, 210)},
                                      {"A5", QSizeF(148, 210)},
                                      {"Rolle 80", QSizeF(80, 0)},
                                      {"Rolle 58", QSizeF(58, 0)}}) {
        const QByteArray text = QByteArray("<meta name=\"Seite\" content=\"") + paper +
                                "\"><meta name=\"Rand\" content=\"1 2 3 4.5\">x";
        const platform::ReportPage page = ReportTemplate(write(text)).fill({}).page;
        EXPECT_EQ(page.size, size) << paper;
        EXPECT_EQ(page.margins, QMarginsF(4.5, 1, 2, 3)) << paper;
    }
}

TEST_F(ReportTemplateTest, RefusesWhatCannotBeUsed) {
    const std::tuple<QByteArray, const char*> cases[] = {
        {"", "ist nicht verwendbar: sie ist leer"},
        {"{{#T}}offen", "Platzhalter sind fehlerhaft"},
        {"{{#T}}{{/U}}", "Platzhalter sind fehlerhaft"},
        {"zu{{", "Platzhalter sind fehlerhaft"},
        {"{{=<% %>=}}x", "lassen sich nicht anders schreiben"},
        {QByteArray(1'000'001, 'x'), "zu gross"},
        {QByteArray("{{#T}}").repeated(3000) + "x" + QByteArray("{{/T}}").repeated(3000), "zu tief"},
        {QByteArray("<table><tr><td>").repeated(3000) + "x", "zu tief"},
        {QByteArray("{{#T}}<table><tr><td>").repeated(10) + "x" + QByteArray("{{/T}}").repeated(10),
         "zu tief"},
        {QByteArray("<b>").repeated(100'000), "zu tief"},
        {"<meta name=\"Seite\" content=\"A9\">x", "das Papier \"A9\" ist unbekannt"},
        {"<meta name=\"Seite\" content=\"Rolle 80\"><meta name=\"Rand\" content=\"1 40 1 40\">x",
         "keinen Platz"},
    };

    for (const auto& [text, partOfSentence] : cases) {
        try {
            ReportTemplate(write(text)).fill(oneLine());
            ADD_FAILURE() << "accepted: " << text.left(40).toStdString();
        } catch (const common::RunTimeError& error) {
            EXPECT_TRUE(error.sentence().contains(QString::fromUtf8(partOfSentence)))
                << error.sentence().toStdString();
            EXPECT_TRUE(error.sentence().contains(u"rep_test.rpt"_s));
        }
    }
}

TEST_F(ReportTemplateTest, ReadsNoFileOutsideItsFolder) {
    const QTemporaryDir outside;
    QImage tall(10, 3000, QImage::Format_RGB32);
    for (const QString& place :
         {m_folder.filePath(u"bild.png"_s), outside.filePath(u"bild.png"_s), outside.filePath(u"x.png"_s)})
        ASSERT_TRUE(tall.save(place));
    ASSERT_TRUE(QFile::link(outside.filePath(u"bild.png"_s), m_folder.filePath(u"verweis.png"_s)));
    const QString sheet = outside.filePath(u"gross.css"_s);
    QFile css(sheet);
    ASSERT_TRUE(css.open(QIODevice::WriteOnly));
    css.write("p { font-size: 300pt; }");
    css.close();
    const QString up = u"../"_s + QFileInfo(outside.path()).fileName() + u"/bild.png"_s;
    const QString picture = u"<img src=\"%1\">"_s;

    const std::tuple<QString, bool> cases[] = {
        {picture.arg(u"bild.png"_s), true},
        {picture.arg(outside.filePath(u"bild.png"_s)), false},
        {picture.arg(u"file://"_s + outside.filePath(u"bild.png"_s)), false},
        {picture.arg(up), false},
        {picture.arg(u"verweis.png"_s), false},
        {u"<link rel=\"stylesheet\" href=\"%1\">"_s.arg(sheet), false}};

    for (const auto& [names, shown] : cases) {
        const QString text = u"<meta name=\"Seite\" content=\"Rolle 80\">"_s + names + u"<p>x</p>"_s;
        const QString pdf = m_folder.filePath(u"slip.pdf"_s);
        platform::saveAsPdf(platform::ReportDocument(ReportTemplate(write(text.toUtf8())).fill({})), pdf);
        EXPECT_EQ(test::pdfPages(pdf).height > 200, shown) << names.toStdString();
    }
}
