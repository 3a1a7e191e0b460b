// SPDX-License-Identifier: MIT
#include "host/dialogs/commandswindow.h"

#include "host/tcl/commandhelp.h"
#include "host/tcl/translation.h"

#include <QDialog>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

namespace mirn::zelchip {

namespace {

const QString CommandsWindowName = QStringLiteral("commandsWindow");
constexpr double CommandsMargin = 16; // device-independent pixels
constexpr QSize CommandsWindowSize(820, 640); // device-independent pixels

QDialog* newCommandsWindow(QWidget* parent)
{
    auto* window = new QDialog(parent);
    window->setObjectName(CommandsWindowName);
    window->setWindowTitle(tr("Commands"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* text = new QTextBrowser(window);
    text->setFrameShape(QFrame::NoFrame);
    text->setMarkdown(commandReference());
    text->document()->setDocumentMargin(CommandsMargin);
    layout->addWidget(text);
    window->resize(CommandsWindowSize);
    return window;
}

} // namespace

void openCommandsWindow(QWidget* parent)
{
    auto* window = parent->findChild<QDialog*>(CommandsWindowName);
    if (!window)
        window = newCommandsWindow(parent);
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace mirn::zelchip
