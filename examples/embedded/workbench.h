// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <memory>

class QListWidget;
class QPlainTextEdit;
class QToolBar;

namespace mirn::zelchipview {
class PlanAids;
class ZelChipGUI;
} // namespace mirn::zelchipview

namespace mirn::zelengine {
class ReferenceEngine;
}

// The window of a bigger program. The chip view is one part of it: a tab beside others, with docks and a tool bar that
// belong to the window. It owns the engine and the view, and deletes them in the right order.
class Workbench final : public QMainWindow
{
public:
    explicit Workbench(std::unique_ptr<mirn::zelengine::ReferenceEngine> engine);
    ~Workbench() override;

    // Places the first resource that fits somewhere, as a drop would. Returns false if there is none.
    bool placeOne();

private:
    void addTabs();
    void addDocks();
    void addTools();
    void addPlanningAids();
    void answer(const QString& command, int& ret, QString& result);
    void refresh();

    std::unique_ptr<mirn::zelengine::ReferenceEngine> m_engine;
    std::unique_ptr<mirn::zelchipview::ZelChipGUI> m_chipView;
    mirn::zelchipview::PlanAids* m_aids = nullptr; // owned by the chip view
    QListWidget* m_unplaced; // owned by a dock
    QPlainTextEdit* m_log; // owned by a dock
    QToolBar* m_tools; // owned by the window
};
