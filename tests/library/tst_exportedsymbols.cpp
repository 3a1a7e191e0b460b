// SPDX-License-Identifier: MIT
#include "graphics/zelrectattribute.h"
#include "graphics/zelrectitem.h"
#include "platform/contract/zelversion.h"
#include "tests/support/chipviewfixture.h"

#include <QProcess>
#include <QRegularExpression>

using namespace zeltest;

namespace {

// The exports of a library: functions by the class or scope that they belong to, under an empty key, and classes by the
// kind of the symbol that the linker has of them, such as "vtable" or "typeinfo".
QMap<QString, QSet<QString>> exportedBy(const QString& library)
{
    static const QRegularExpression Symbol(
        "^\\S+ \\w (?!__)(?:(vtable|typeinfo name|typeinfo|VTT|guard variable) for |(?:non-)?virtual thunk to )?(.*)$",
        QRegularExpression::MultilineOption);
    QProcess nm;
    nm.start(ZEL_NM, {"-DC", "--defined-only", library});
    nm.waitForFinished();
    QMap<QString, QSet<QString>> exported;
    auto symbols = Symbol.globalMatch(QString::fromLocal8Bit(nm.readAllStandardOutput()));
    while (symbols.hasNext()) {
        const QRegularExpressionMatch symbol = symbols.next();
        const QString name = symbol.captured(2).section('(', 0, 0).remove("[abi:cxx11]");
        const auto scope = symbol.captured(1).isEmpty() ? name.lastIndexOf("::") : -1;
        exported[symbol.captured(1)].insert(scope < 0 ? name : name.left(scope));
    }
    return exported;
}

// The names in one text, which a failure shows as a whole.
QString sorted(const QSet<QString>& names)
{
    QStringList list(names.begin(), names.end());
    list.sort();
    return list.join(' ');
}

} // namespace

// The libraries export what hosts may use, which has to be kept.
class TestExportedSymbols final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void onlyTheInterfaceIsExported_data()
    {
        // A name that is not here was exported by accident, or is to be added here and to the installed headers.
        const Rows<QString, QString, QString> row; // the library, a namespace, the names in it or in none
        row("the platform exports the contract", ZELPLATFORM_LIBRARY, "mirn::itemviewgui::",
            "::BaseAction ::BaseNavigator ::MirnImplementation ::MirnProject ::MirnProjectManager ::SVGParser "
            "::TRQDebug ::UT_FILEMANAGER ::UT_STREAM ::zel_Line ::zel_Polygon ::zel_Rect ::zel_SingleGraphItem "
            "::zel_Text ::zelattributes ::zelchipdata ::zelchipengine ::zelplanengine ::zelprogress ::zelproject "
            "::diagTrace "
            "::isDiagTraceEnabled ::setDiagTraceSink ::ut_file ::zelchipguiVersion GridItem");
        row("the component exports its window, controller, graphics and widgets", ZELCHIPGUI_LIBRARY,
            "mirn::zelchipview::",
            "ChipElement ChipViewNavigator ElementIdSet ZELChipViewDatabase ZELChipViewTreeItem ZELDCUSettingDlg "
            "ZELFillableAttribute ZELGraphicItemAttribute ZELLineAttribute ZELLineItem ZELPolygonAttribute "
            "ZELPolygonItem ZELRectAttribute ZELRectItem ZELTextAttribute ZELTextItem ZelChipGUI ZelGraphicsScene "
            "ZelDrawingPicture ZelGraphicsView ZelViewLayer DragReason DragWatch GhostLayer LockLayer MoveGesture "
            "NameLayer OverviewMap "
            "PlaceOn PlanAids PointerNote ResourceTip SiteCursor SwapQuestion ZelResTable ::mirn::zelchipview ZelTree "
            "ChipScene DrawingController TreeController SettingsController");
    }

    void onlyTheInterfaceIsExported()
    {
        const auto [library, scope, names] = row<QString, QString, QString>();
        QSet<QString> expected;
        for (const QString& name : names.split(' '))
            expected.insert(name.startsWith("::") ? name.mid(2) : scope + name);
        QSet<QString> found;
        for (const QSet<QString>& owners : exportedBy(library)) {
            for (const QString& name : owners) {
                if (!name.startsWith('Q')) // Qt's type information, which sanitizers want everywhere
                    found.insert(name);
            }
        }
        QCOMPARE(sorted(found - expected), QString());
        QCOMPARE(sorted(expected - found), QString());
    }

    void classesKeepTheirTypeInformation()
    {
        for (const char* library : {ZELPLATFORM_LIBRARY, ZELCHIPGUI_LIBRARY}) {
            const auto exported = exportedBy(library);
            QVERIFY(!exported["vtable"].isEmpty());
            for (const char* kind : {"typeinfo", "typeinfo name"})
                QCOMPARE(sorted(exported["vtable"] - exported[kind]), QString());
        }
    }

    // Objects made on one side of the library's border are recognised on the other.
    void objectsOfTheLibraryAreRecognisedHere()
    {
        ChipView view;
        view.drawing.addRect(7, 10, 10, 20, 20);
        // The loader makes items only of records whose class, which was made here, is the one of their kind.
        view.drawing.addRect(7, 10, 10, 20, 20).kind = ZEL_GRAPHIC_LINE;
        view.open();
        QObject* const controller = view.database();
        QVERIFY(qobject_cast<ZELChipViewDatabase*>(controller));
        QObject* const scene = view.scene();
        QVERIFY(qobject_cast<ZelGraphicsScene*>(scene));
        QCOMPARE(view.scene()->items().size(), 1);
        auto* const element = dynamic_cast<ChipElement*>(view.item(1));
        QVERIFY(element && dynamic_cast<ZELRectItem*>(element));
        QVERIFY(dynamic_cast<const ZELRectAttribute*>(element->attribute()));
    }

    void versionIsTheOneCompiledWith() { QCOMPARE(zelchipguiVersion(), ZELCHIPGUI_VERSION_STRING); }
};

ZEL_TEST_MAIN(TestExportedSymbols)
#include "tst_exportedsymbols.moc"
