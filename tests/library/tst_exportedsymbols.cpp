// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSet>

namespace {

// What the linker wrote down of a symbol, in C++'s spelling.
struct Symbol
{
    QString kind; // "vtable", "typeinfo", "typeinfo name", "thunk"; empty for functions and data
    QString owner; // the class, or the name where there is none
};

Symbol symbolOf(const QString& text)
{
    static const QRegularExpression Prefix(
        QStringLiteral("^(?:(vtable|typeinfo name|typeinfo|VTT|guard variable) for|(?:non-)?virtual (thunk) to) "));
    const QRegularExpressionMatch prefix = Prefix.match(text);
    const QString kind = prefix.captured(1) + prefix.captured(2);
    const QString name
        = text.mid(prefix.capturedLength()).section(QLatin1Char('('), 0, 0).remove(QStringLiteral("[abi:cxx11]"));
    const bool isClass = !kind.isEmpty() && kind != QStringLiteral("thunk");
    const int lastScope = static_cast<int>(name.lastIndexOf(QStringLiteral("::")));
    return {kind, isClass || lastScope < 0 ? name : name.left(lastScope)};
}

QList<Symbol> symbolsIn(const QString& library)
{
    QProcess nm;
    nm.start(QStringLiteral(ZEL_NM), {QStringLiteral("-DC"), QStringLiteral("--defined-only"), library});
    nm.waitForFinished();
    static const QRegularExpression Line(QStringLiteral("^\\S+ \\w (?!__)(.*)$"), QRegularExpression::MultilineOption);
    QRegularExpressionMatchIterator lines = Line.globalMatch(QString::fromLocal8Bit(nm.readAllStandardOutput()));
    QList<Symbol> symbols;
    while (lines.hasNext())
        symbols.append(symbolOf(lines.next().captured(1)));
    return symbols;
}

// In one text, which a failure shows as a whole.
QString sorted(const QSet<QString>& names)
{
    QStringList list(names.begin(), names.end());
    list.sort();
    return list.join(QLatin1Char(' '));
}

QSet<QString> setOf(const QString& words, const QString& scope)
{
    QSet<QString> names;
    for (const QString& word : words.simplified().split(QLatin1Char(' ')))
        names.insert(scope + word);
    return names;
}

} // namespace

// What leaves the libraries is what hosts may use, and has to be kept. A name that is not in these lists was exported
// by accident, or is to be added here and to the installed headers.
class TestExportedSymbols final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void onlyTheInterfaceIsExported_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QSet<QString>>("expected");
        QTest::newRow("the platform exports the contract")
            << QStringLiteral(ZELPLATFORM_LIBRARY)
            << (setOf(
                    QStringLiteral(
                        "BaseAction BaseNavigator MirnImplementation MirnProject MirnProjectManager SVGParser TRQDebug "
                        "UT_FILEMANAGER UT_STREAM zel_Line zel_Polygon zel_Rect zel_SingleGraphItem zel_Text "
                        "zelattributes zelchipdata zelchipengine zelprogress zelproject "
                        "diagTrace isDiagTraceEnabled setDiagTraceSink ut_file zelchipguiVersion"),
                    QString())
                   + setOf(QStringLiteral("GridItem"), QStringLiteral("mirn::itemviewgui::")));
        QTest::newRow("the component exports its window, controller, graphics and widgets")
            << QStringLiteral(ZELCHIPGUI_LIBRARY)
            << setOf(
                   QStringLiteral("ChipElement ChipViewNavigator ElementIdSet ZELChipViewDatabase ZELChipViewTreeItem "
                                  "ZELDCUSettingDlg ZELFillableAttribute ZELGraphicItemAttribute ZELLineAttribute "
                                  "ZELLineItem ZELPolygonAttribute ZELPolygonItem ZELRectAttribute ZELRectItem "
                                  "ZELTextAttribute ZELTextItem ZelChipGUI ZelGraphicsScene ZelGraphicsView "
                                  "ZelResTable ZelTree ChipScene DrawingController TreeController SettingsController"),
                   QStringLiteral("mirn::zelchipview::"));
    }
    void onlyTheInterfaceIsExported()
    {
        QFETCH(QString, library);
        QFETCH(QSet<QString>, expected);
        QSet<QString> owners;
        for (const Symbol& symbol : symbolsIn(library)) {
            if (!symbol.owner.startsWith(QLatin1Char('Q'))) // Qt's type information, which sanitizers want everywhere
                owners.insert(symbol.owner);
        }
        QCOMPARE(sorted(owners - expected), QString());
        QCOMPARE(sorted(expected - owners), QString());
    }

    void classesKeepTheirTypeInformation()
    {
        for (const char* library : {ZELPLATFORM_LIBRARY, ZELCHIPGUI_LIBRARY}) {
            QHash<QString, QSet<QString>> owners; // by kind
            for (const Symbol& symbol : symbolsIn(QString::fromLocal8Bit(library)))
                owners[symbol.kind].insert(symbol.owner);
            const QSet<QString> withVirtuals = owners.value(QStringLiteral("vtable"));
            QVERIFY(!withVirtuals.isEmpty());
            QCOMPARE(sorted(withVirtuals - owners.value(QStringLiteral("typeinfo"))), QString());
            QCOMPARE(sorted(withVirtuals - owners.value(QStringLiteral("typeinfo name"))), QString());
        }
    }
};

ZEL_TEST_MAIN(TestExportedSymbols)
#include "tst_exportedsymbols.moc"
