// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <vector>

class QMessageBox;

namespace mirn::zelengine {
struct PlacementAnswer;
}

namespace mirn::zelchip {

class DesignEditor;
class DrawingArea;
class SearchThread;

// Places what is unplaced: searches in a thread, with a dialog once that takes longer than a moment, places what was
// found in one step, or says why nothing was found and offers what can be placed. It is a child of the graphics view.
class AutoPlace final : public QObject
{
    Q_OBJECT
public:
    // The area must live as long.
    explicit AutoPlace(DrawingArea& area);

    // Places all unplaced resources, or those that a resource consists of.
    void placeRest();
    void placeBelow(const QString& resource);
    // Whether something of a resource is unplaced.
    [[nodiscard]] bool hasUnplaced(const QString& resource) const;

Q_SIGNALS:
    // The outcome, if no message box says it; a sentence for users.
    void told(const QString& sentence);

private:
    void search(const std::vector<int>& tops);
    void showProgress(SearchThread* thread);
    void finish(const SearchThread* thread);
    void place(const zelengine::PlacementAnswer& answer);
    void explain(const zelengine::PlacementAnswer& answer);
    void addButtons(QMessageBox* box, const zelengine::PlacementAnswer& answer);
    void showConflict(const zelengine::PlacementAnswer& answer);
    [[nodiscard]] DesignEditor& editor() const;

    DrawingArea& m_area;
    SearchThread* m_thread = nullptr; // child; null while nothing is searched
};

} // namespace mirn::zelchip
