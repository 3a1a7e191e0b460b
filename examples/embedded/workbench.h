// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include <memory>

class QListWidget;
class QPlainTextEdit;

namespace mirn::zelchipview {
class ZelChipGUI;
}

namespace mirn::zelengine {
class ReferenceEngine;
}

// The window of a bigger program, of which the chip view is one part: a tab beside others, with docks and a tool bar
// that are the window's own. Holds the engine and the view, and ends them in the right order.
class Workbench final : public QMainWindow
{
public:
    explicit Workbench(std::unique_ptr<mirn::zelengine::ReferenceEngine> engine);
    ~Workbench() override;

    // Places the first resource that fits somewhere, as a drop would. False when there is none.
    bool placeOne();

private:
    void addTabs();
    void addDocks();
    void addTools();
    void answer(const QString& command, int& ret, QString& result);
    void refresh();

    std::unique_ptr<mirn::zelengine::ReferenceEngine> m_engine;
    std::unique_ptr<mirn::zelchipview::ZelChipGUI> m_chipView;
    QListWidget* m_unplaced; // of a dock
    QPlainTextEdit* m_log; // of a dock
};
