// SPDX-License-Identifier: MIT
#include "planning/swapquestion.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/elementidset.h"
#include "planning/dragwatch.h"

#include <QLabel>
#include <QMenu>
#include <QTimer>
#include <QWidgetAction>

namespace mirn::zelchipview {

namespace {

constexpr int QuestionMargin = 8; // pixels

} // namespace

SwapQuestion::SwapQuestion(DragWatch* watch, QWidget* parent)
    : QObject(watch)
    , m_parent(parent)
{
    connect(watch, &DragWatch::swapDropped, this, [this](const DropPlan& plan, QPoint position, bool isAtOnce) {
        if (isAtOnce)
            swap(plan);
        else // a menu that opened now would take the end of the drag
            QTimer::singleShot(0, this, [this, plan, position] { ask(plan, position); });
    });
}

void SwapQuestion::ask(const DropPlan& plan, QPoint globalPosition)
{
    auto* menu = new QMenu(m_parent);
    menu->setObjectName(QStringLiteral("swapQuestion"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto* text = new QLabel(tr("Swap %1 and %2?").arg(plan.resource, plan.other), menu);
    text->setTextFormat(Qt::PlainText);
    text->setMargin(QuestionMargin);
    auto* question = new QWidgetAction(menu);
    question->setDefaultWidget(text); // owned by the action
    menu->addAction(question);
    QAction* yes = menu->addAction(tr("&Swap"));
    menu->addAction(tr("&Leave as They Are"));
    connect(yes, &QAction::triggered, this, [plan] { swap(plan); });
    menu->popup(globalPosition, yes); // under the pointer, which would choose what it is on
    menu->setActiveAction(yes);
}

void SwapQuestion::swap(const DropPlan& plan)
{
    ZELChipViewDatabase* controller = ZELChipViewDatabase::getInstance();
    if (controller->swap(plan.resource, plan.other) != 0)
        controller->selectedIds().assign({plan.site});
}

} // namespace mirn::zelchipview
