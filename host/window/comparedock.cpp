// SPDX-License-Identifier: MIT
#include "host/window/comparedock.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/design/journalreader.h"
#include "host/design/placementdiff.h"
#include "host/dialogs/messagebox.h"
#include "host/project/projectsession.h"
#include "host/widgets/differencelist.h"
#include "host/window/drawingarea.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

#include <utility>
#include <vector>

namespace mirn::zelchip {

namespace {

using What = PlacementDifference::What;

QString placeText(const QString& site)
{
    return site.isEmpty() ? CompareDock::tr("not placed") : site;
}

QString valueText(What what, const QString& value)
{
    const bool isSet = value == QLatin1String("1");
    switch (what) {
    case What::Existence:
        return isSet ? CompareDock::tr("in the design") : CompareDock::tr("removed");
    case What::Lock:
        return isSet ? CompareDock::tr("locked") : CompareDock::tr("not locked");
    case What::Place:
        return placeText(value);
    case What::Parameter:
    case What::Setting:
        break;
    }
    return value;
}

QString whatText(const PlacementDifference& difference)
{
    switch (difference.what) {
    case What::Existence:
        return CompareDock::tr("existence");
    case What::Place:
        return CompareDock::tr("place");
    case What::Lock:
        return CompareDock::tr("lock");
    case What::Parameter:
    case What::Setting:
        break;
    }
    return difference.key;
}

std::vector<ListedDifference> listedDifferences(const std::vector<PlacementDifference>& differences)
{
    std::vector<ListedDifference> result;
    result.reserve(differences.size());
    for (const PlacementDifference& difference : differences)
        result.push_back({difference.name, whatText(difference), valueText(difference.what, difference.from),
            valueText(difference.what, difference.to), difference.sites});
    return result;
}

QString placementFileOf(const zelengine::Implementation& implementation)
{
    return implementation.directory + QLatin1String(PlacementFile);
}

} // namespace

CompareDock::CompareDock(QMainWindow* window, QDockWidget* console, Area area)
    : ListDock(window, console, QStringLiteral("Comparison"),
        {tr("Comparison"), tr("Comparison (%1)"), tr("Co&mparison")}, std::move(area))
    , m_list(new DifferenceList([this](const ListedDifference& difference) { show(difference); }, this))
{
    setWidget(m_list);
}

CompareDock::~CompareDock() = default;

void CompareDock::setMenu(QMenu* menu)
{
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fillMenu(menu); });
}

void CompareDock::fillMenu(QMenu* menu)
{
    menu->clear();
    const DrawingArea* shown = area();
    if (!shown)
        return;
    connect(menu->addAction(tr("The &Saved One")), &QAction::triggered, this, [this] { compareWith({}); });
    connect(menu->addAction(tr("A &File...")), &QAction::triggered, this, &CompareDock::chooseFile);
    const DesignEditor& editor = shown->session().editor();
    for (const zelengine::Implementation& implementation : editor.engine().project().implementations) {
        const QString file = placementFileOf(implementation);
        if (file == editor.placementFile())
            continue;
        QAction* action = menu->addAction(tr("Implementation %1").arg(implementation.name));
        action->setEnabled(QFileInfo::exists(file));
        connect(action, &QAction::triggered, this, [this, file, name = implementation.name] {
            compareWith({file, tr("In %1").arg(name)});
        });
    }
}

void CompareDock::chooseFile()
{
    const DrawingArea* shown = area();
    const QString folder = shown ? QFileInfo(shown->session().editor().placementFile()).path() : QString();
    const QString file = QFileDialog::getOpenFileName(
        parentWidget(), tr("Compare Placement"), folder, tr("Placement files (*.tcl);;All files (*)"));
    if (!file.isEmpty())
        compareWith({file, tr("In %1").arg(QFileInfo(file).fileName())});
}

void CompareDock::compareWith(const Other& other)
{
    const DrawingArea* shown = area();
    m_editor = shown ? &shown->session().editor() : nullptr;
    m_other = other;
    m_content.clear();
    come();
    refresh();
}

void CompareDock::refresh()
{
    const DrawingArea* shown = area();
    if (!shown)
        return;
    if (!isVisible()) {
        setCount(0); // nothing is compared, and a tab must not show the count of before
        return;
    }
    const DesignEditor& editor = shown->session().editor();
    if (m_editor != &editor) { // another project
        m_other = {};
        m_content.clear();
        m_editor = &editor;
    }
    const QString error = readAgain(editor);
    m_list->setOther(m_other.file.isEmpty() ? tr("Saved") : m_other.name);
    m_list->setSentence(error.isEmpty() ? tr("There are no differences.") : asSentence(error));
    const auto differences
        = m_read ? placementDifferences(*m_read, editor.engine()) : std::vector<PlacementDifference>();
    m_list->setDifferences(listedDifferences(differences));
    setCount(static_cast<int>(differences.size()));
}

// Reads the file unless it is as it was. Returns what is wrong with it.
QString CompareDock::readAgain(const DesignEditor& editor)
{
    const QString file = m_other.file.isEmpty() ? editor.placementFile() : m_other.file;
    const QByteArray content = (QFileInfo::exists(file) ? "there " : "missing ") + hashOfFile(file);
    if (content == m_content)
        return m_error;
    m_content = content;
    m_error.clear();
    m_read
        = m_other.file.isEmpty() ? readSavedPlacement(editor, &m_error) : readPlacement(editor, m_other.file, &m_error);
    return m_error;
}

// The focus stays in the list, so that one can go from row to row.
void CompareDock::show(const ListedDifference& difference)
{
    DrawingArea* shown = area();
    if (!shown)
        return;
    shown->selectRow(difference.name);
    if (!difference.sites.empty())
        shown->selectAndZoom(difference.sites);
}

} // namespace mirn::zelchip
