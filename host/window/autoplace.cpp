// SPDX-License-Identifier: MIT
#include "host/window/autoplace.h"

#include "engine/referenceengine.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/design/designeditor.h"
#include "host/dialogs/messagebox.h"
#include "host/project/projectsession.h"
#include "host/window/drawingarea.h"
#include "host/window/searchthread.h"
#include "planning/siteplaces.h"

#include <QMessageBox>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <memory>
#include <utility>

namespace mirn::zelchip {

namespace {

using zelengine::PlacementAnswer;
using zelengine::PlacementSearch;

constexpr int PatienceMilliseconds = 500; // until the dialog appears
constexpr int UpdateMilliseconds = 50; // between two looks at the progress

std::unique_ptr<const PlacementSearch> searchOf(
    const zelengine::ReferenceEngine& engine, zelchipview::ZelGraphicsScene& scene)
{
    return std::make_unique<PlacementSearch>(engine.device(), engine.design(), engine.settings(),
        [&scene](int site) { return middleOf(scene, site); }); // asked at once, and never by the thread
}

bool isUnplaced(const zelengine::Resource& resource)
{
    return zelengine::hasOwnSite(resource.type) && resource.site < 0;
}

} // namespace

AutoPlace::AutoPlace(DrawingArea& area)
    : QObject(area.graphicsView())
    , m_area(area)
{ }

DesignEditor& AutoPlace::editor() const
{
    return m_area.session().editor();
}

bool AutoPlace::hasUnplaced(const QString& resource) const
{
    const zelengine::Design& design = editor().engine().design();
    const int top = design.find(resource);
    if (top < 0)
        return false;
    for (int index : design.subtree(top)) {
        if (isUnplaced(design.resource(index)))
            return true;
    }
    return false;
}

void AutoPlace::placeRest()
{
    search(editor().engine().design().topLevel());
}

void AutoPlace::placeBelow(const QString& resource)
{
    const int top = editor().engine().design().find(resource); // a script may have removed it meanwhile
    if (top >= 0)
        search({top});
}

void AutoPlace::search(const std::vector<int>& tops)
{
    if (m_thread)
        return; // one search at a time
    std::unique_ptr<const PlacementSearch> search = searchOf(editor().engine(), *m_area.scene());
    std::vector<int> resources = search->unplacedBelow(tops);
    if (resources.empty()) {
        Q_EMIT told(tr("Everything is placed."));
        return;
    }
    m_thread = new SearchThread(std::move(search), std::move(resources), this);
    connect(m_thread, &QThread::finished, this, [this] {
        SearchThread* thread = std::exchange(m_thread, nullptr);
        finish(thread);
        thread->deleteLater();
    });
    showProgress(m_thread);
    m_thread->start();
}

// The thread has the dialog deleted.
void AutoPlace::showProgress(SearchThread* thread)
{
    const QString text
        = thread->wanted() == 1 ? tr("Placing 1 resource...") : tr("Placing %1 resources...").arg(thread->wanted());
    auto* dialog = new QProgressDialog(text, tr("Cancel"), 0, thread->wanted() + 1, m_area.graphicsView()->window());
    dialog->setObjectName(QStringLiteral("autoPlaceProgress"));
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setMinimumDuration(PatienceMilliseconds);
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    connect(dialog, &QProgressDialog::canceled, thread, [thread] { thread->cancel(); });
    // While the dialog is shown its own setValue() would handle events, and one of them may delete the dialog.
    auto* bar = new QProgressBar(dialog);
    bar->setRange(0, thread->wanted() + 1);
    dialog->setBar(bar);
    dialog->setValue(0); // begins to wait until it appears
    auto* look = new QTimer(dialog);
    connect(look, &QTimer::timeout, thread, [bar, thread] { bar->setValue(thread->placed()); });
    look->start(UpdateMilliseconds);
    connect(thread, &QThread::finished, dialog, [dialog, look] {
        look->stop();
        dialog->hide();
        dialog->deleteLater();
    });
    connect(thread, &QObject::destroyed, dialog, &QObject::deleteLater);
}

void AutoPlace::finish(const SearchThread* thread)
{
    const PlacementAnswer& answer = thread->answer();
    if (answer.kind == PlacementAnswer::Kind::Placed)
        place(answer);
    else if (answer.kind == PlacementAnswer::Kind::Cancelled)
        Q_EMIT told(tr("Nothing was placed."));
    else
        explain(answer);
}

// The design may have changed during the search. What somebody has placed meanwhile stays where it is; of the others
// the rules are asked again.
void AutoPlace::place(const PlacementAnswer& answer)
{
    const std::vector<zelengine::Placement> placements
        = PlacementSearch::ofUnplaced(editor().engine().design(), answer.placements);
    const zelengine::Refusal refusal = editor().move(tr("Place the rest"), placements);
    const auto count = static_cast<int>(placements.size());
    if (!refusal.isEmpty())
        Q_EMIT told(asSentence(refusal.sentence()) + QLatin1Char('.'));
    else
        Q_EMIT told(count == 1 ? tr("1 resource was placed.") : tr("%1 resources were placed.").arg(count));
}

void AutoPlace::explain(const PlacementAnswer& answer)
{
    const bool isProven = answer.kind == PlacementAnswer::Kind::Impossible;
    auto* box = new QMessageBox(QMessageBox::Information, tr("Place the Rest"),
        isProven ? tr("There is no place for everything.") : tr("No place for everything was found."),
        QMessageBox::NoButton, m_area.graphicsView()->window());
    box->setObjectName(QStringLiteral("autoPlaceAnswer"));
    box->setTextFormat(Qt::PlainText); // a path may look like mark-up
    QString text = asSentence(answer.sentence) + QLatin1Char('.');
    if (!answer.placements.empty())
        text += QLatin1Char('\n')
            + tr("%1 of %2 resources can be placed.")
                  .arg(QString::number(answer.placements.size()),
                      QString::number(answer.placements.size() + answer.missing.size()));
    box->setInformativeText(text);
    QStringList missing(tr("These would stay without a place:"));
    for (int resource : answer.missing)
        missing.append(editor().engine().design().resource(resource).path);
    box->setDetailedText(missing.join(QLatin1Char('\n')));
    addButtons(box, answer);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void AutoPlace::addButtons(QMessageBox* box, const PlacementAnswer& answer)
{
    if (!answer.placements.empty()) {
        const QPushButton* part = box->addButton(tr("Place These"), QMessageBox::AcceptRole);
        connect(part, &QPushButton::clicked, this, [this, answer] { place(answer); });
    }
    if (!answer.conflict.empty()) {
        const QPushButton* show = box->addButton(tr("Show Conflict"), QMessageBox::ActionRole);
        connect(show, &QPushButton::clicked, this, [this, answer] { showConflict(answer); });
    }
    box->setDefaultButton(box->addButton(QMessageBox::Cancel));
}

// Selects the first resource of the conflict, and in the drawing the placed ones that stand against it.
void AutoPlace::showConflict(const PlacementAnswer& answer)
{
    const zelengine::Design& design = editor().engine().design();
    m_area.selectRow(design.resource(answer.conflict.front()).path);
    std::vector<int> sites;
    for (int resource : answer.reasons) {
        if (design.resource(resource).site >= 0)
            sites.push_back(design.resource(resource).site);
    }
    if (!sites.empty())
        m_area.selectAndZoom(sites);
}

} // namespace mirn::zelchip
