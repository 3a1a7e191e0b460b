// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QTreeWidget;

namespace mirn::zelengine {
class ReferenceEngine;
}
namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Watches drags over the drawing. It reports why the site under the pointer does not accept the resource, and clears
// the highlighted probable sites when the drag ends. It is a child of the view; engine and tree must live as long.
class DragReason final : public QObject
{
    Q_OBJECT
public:
    DragReason(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelengine::ReferenceEngine& engine);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted with an empty text if there is nothing to say: the site accepts the resource, there is no site, or the
    // drag ended.
    void changed(const QString& reason);

private:
    [[nodiscard]] QString reasonAt(QPoint position) const;
    void tell(const QString& reason);

    zelchipview::ZelGraphicsView* const m_view;
    QTreeWidget* const m_tree;
    const zelengine::ReferenceEngine& m_engine;
    QString m_reason;
};

} // namespace mirn::zelchip
