// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPoint>
#include <QString>

#include <memory>

class QMouseEvent;
class QTreeWidget;
class QTreeWidgetItem;
class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsView;

// Lets a placed resource be dragged in the drawing from its site to another. The drag begins on an occupied element
// that was selected before the press, in the mode "select"; everywhere else a press does what it does without this
// class. It is a drag of the resource's row, so that the view treats it like one from the tree. If an IP is the tree's
// selected row, its parts move together. Afterwards the new sites are selected, or, if nothing was dropped, what was
// selected before. It is a child of the view; tree and engine must live as long.
class ZELCHIPGUI_EXPORT MoveGesture final : public QObject
{
    Q_OBJECT
public:
    MoveGesture(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine);
    ~MoveGesture() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted instead of a drag if the resource must stay where it is, with the engine's sentence.
    void refused(const QString& reason, QPoint globalPosition);

private:
    bool press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    void letTheViewHaveThePress();
    void begin(QPoint globalPosition);
    void drag(QTreeWidgetItem* row);
    [[nodiscard]] QTreeWidgetItem* rowFor(const QString& resource) const;

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
