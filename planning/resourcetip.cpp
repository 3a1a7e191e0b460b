// SPDX-License-Identifier: MIT
#include "planning/resourcetip.h"

#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "planning/elementprobe.h"
#include "planning/planquery.h"

#include <QHelpEvent>
#include <QStringList>
#include <QTextDocument>
#include <QToolTip>

namespace mirn::zelchipview {

ResourceTip::ResourceTip(ZelGraphicsView* view, zelchipengine& engine)
    : QObject(view)
    , m_view(view)
    , m_viewport(view->viewport())
    , m_engine(engine)
{
    view->viewport()->installEventFilter(this);
}

QString ResourceTip::textAt(QPoint position) const
{
    const ZELGraphicItemAttribute* element = elementAt(*m_view, position);
    const PlanQuery query(m_engine);
    const QString resource = element ? query.occupant(element->itemId) : QString();
    const QString description = resource.isEmpty() ? QString() : query.describe(resource);
    if (description.isEmpty())
        return {};
    QStringList lines;
    if (!element->toolTip.isEmpty())
        lines.append(element->toolTip);
    for (const QString& line : description.split(QLatin1Char('\n'))) {
        if (!element->toolTip.contains(line))
            lines.append(line);
    }
    return lines.join(QLatin1Char('\n'));
}

bool ResourceTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip || watched != m_viewport)
        return QObject::eventFilter(watched, event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString text = textAt(help->pos());
    if (text.isEmpty())
        return false;
    // Qt would take a text that looks like HTML for that.
    QToolTip::showText(help->globalPos(), Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal), m_view->viewport());
    return true;
}

} // namespace mirn::zelchipview
