// SPDX-License-Identifier: MIT
#pragma once

#include "host/window/windowtcl.h"

#include <functional>

namespace mirn::zelchip {

class HostActions;
class OpenProject;

// Answers the commands on the view from the parts of the window. The main window owns it.
class ScriptAccess final : public WindowAccess
{
public:
    // The parts outlive it.
    struct Window
    {
        const OpenProject& project;
        const HostActions& actions;
        PlanningMenu& planning;
        std::function<void()> settle; // these four as in WindowAccess
        std::function<void()> fit;
        std::function<QString(const QString& file)> saveSnapshot;
        std::function<QString(const PictureRequest& request)> exportPicture;
    };

    explicit ScriptAccess(Window window);

    zelchipview::ZelChipGUI* chipView() override;
    zelchipview::ZelGraphicsScene* scene() override;
    zelchipview::ZelGraphicsView* graphicsView() override;
    QTreeWidget* tree() override;
    const zelengine::Device& device() const override;
    QAction* names() override;
    QAction* overview() override;
    PlanningMenu& planning() override { return m_window.planning; }
    void settle() override { m_window.settle(); }
    void fit() override { m_window.fit(); }
    QString saveSnapshot(const QString& file) override { return m_window.saveSnapshot(file); }
    QString exportPicture(const PictureRequest& request) override { return m_window.exportPicture(request); }

private:
    const Window m_window;
};

} // namespace mirn::zelchip
