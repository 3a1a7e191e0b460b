// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPoint>

namespace mirn::zelchipview {

class DragWatch;
struct DropPlan;

// Asks beside the pointer whether two resources shall exchange their sites, when one was dropped on the site of the
// other, and sends the command if they shall. With Shift down there is no question. It is a child of the watch.
class ZELCHIPGUI_EXPORT SwapQuestion final : public QObject
{
    Q_OBJECT
public:
    // `parent` becomes the parent of the question's menu. It must live as long as the watch.
    SwapQuestion(DragWatch* watch, QWidget* parent);

private:
    void ask(const DropPlan& plan, QPoint globalPosition);
    static void swap(const DropPlan& plan);

    QWidget* const m_parent;
};

} // namespace mirn::zelchipview
