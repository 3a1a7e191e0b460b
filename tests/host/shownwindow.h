// SPDX-License-Identifier: MIT
#pragma once

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsview.h"
#include "host/console/consoledock.h"
#include "host/design/designeditor.h"
#include "host/project/projectsession.h"
#include "host/window/mainwindow.h"

#include <QCoreApplication>
#include <QLabel>
#include <QTreeWidget>

#include <memory>

// The session of a project or drawing with which nothing is wrong.
inline std::unique_ptr<mirn::zelchip::ProjectSession> openSession(const QString& path)
{
    QString error;
    auto session = mirn::zelchip::ProjectSession::open(path, &error);
    if (!session)
        qFatal("%s", qPrintable(error));
    return session;
}

// The program's window on a project or drawing, and the parts of the window.
class ShownWindow
{
public:
    // Opens a project or drawing in a new window.
    void show(const QString& path, QSize size = {900, 600})
    {
        window.reset();
        auto opened = openSession(path);
        session = opened.get();
        window = std::make_unique<mirn::zelchip::MainWindow>(std::move(opened));
        window->resize(size);
        window->show();
        QCoreApplication::processEvents();
    }

    // Runs a script as if it were typed into the console.
    void run(const QString& script) const
    {
        Q_EMIT console()->commandEntered(script);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] mirn::zelchipview::ZelChipGUI* chipView() const
    {
        return window->findChild<mirn::zelchipview::ZelChipGUI*>();
    }
    [[nodiscard]] mirn::zelchipview::ZelGraphicsView* view() const
    {
        return qobject_cast<mirn::zelchipview::ZelGraphicsView*>(chipView()->centralWidget());
    }
    [[nodiscard]] mirn::zelchip::ConsoleDock* console() const
    {
        return window->findChild<mirn::zelchip::ConsoleDock*>();
    }
    [[nodiscard]] QTreeWidget* tree() const { return chipView()->findChild<QTreeWidget*>(); }
    [[nodiscard]] QString label(const char* name) const { return window->findChild<QLabel*>(name)->text(); }
    [[nodiscard]] mirn::zelchip::DesignEditor& editor() const { return session->editor(); }

    // Null where there is none.
    [[nodiscard]] QTreeWidgetItem* row(const QString& resource) const
    {
        for (QTreeWidgetItemIterator row(tree()); *row; ++row) {
            if ((*row)->data(0, mirn::zelchipview::RESOURCENAME).toString() == resource)
                return *row;
        }
        return nullptr;
    }

    mirn::zelchip::ProjectSession* session = nullptr; // the window's
    std::unique_ptr<mirn::zelchip::MainWindow> window;
};
