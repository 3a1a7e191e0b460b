// SPDX-License-Identifier: MIT
#include "graphics/zelrectattribute.h"
#include "graphics/zelrectitem.h"
#include "platform/contract/zelversion.h"
#include "tests/support/chipviewfixture.h"

using namespace mirn::zelchipview;

// Objects made on one side of the library's border are recognised on the other.
class TestLibraryBorder final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void objectsOfTheLibraryAreRecognisedHere()
    {
        zeltest::ChipView view;
        view.drawing.addRect(7, 10, 10, 20, 20);
        // The loader makes items only of records whose class, which was made here, is the one of their kind.
        view.drawing.addRect(7, 10, 10, 20, 20).kind = ZEL_GRAPHIC_LINE;
        view.open();
        QObject* const controller = ZELChipViewDatabase::getInstance();
        QVERIFY(qobject_cast<ZELChipViewDatabase*>(controller));
        QObject* const scene = view.scene();
        QVERIFY(qobject_cast<ZelGraphicsScene*>(scene));

        const QList<QGraphicsItem*> items = view.scene()->items();
        QCOMPARE(items.size(), 1);
        auto* const element = dynamic_cast<ChipElement*>(items.first());
        QVERIFY(element);
        QVERIFY(dynamic_cast<ZELRectItem*>(element));
        QVERIFY(dynamic_cast<const ZELRectAttribute*>(element->attribute()));
    }

    void theVersionIsTheOneCompiledWith() { QCOMPARE(zelchipguiVersion(), ZELCHIPGUI_VERSION_STRING); }
};

ZEL_TEST_MAIN(TestLibraryBorder)
#include "tst_libraryborder.moc"
