// SPDX-License-Identifier: MIT
#include "planning/planaids.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/elementidset.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "planning/candidatelayer.h"
#include "planning/connectionlayer.h"
#include "planning/elementprobe.h"
#include "planning/planengine.h"
#include "planning/planlines.h"
#include "planning/sentence.h"
#include "planning/siteareas.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelplanengine.h"
#include "platform/contract/zeltext.h"

#include <QHash>
#include <QHelpEvent>
#include <QPointer>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr std::size_t MostWithAllPairs = 16; // selected resources
constexpr int ToolTipReach = 4; // pixels that the pointer may move while a tool tip stays

bool isPartOf(const std::string& resource, const std::string& branch)
{
    return resource.compare(0, branch.size(), branch) == 0
        && (resource.size() == branch.size() || resource[branch.size()] == '/');
}

// Texts of the engine may look like markup.
QString asToolTip(const QString& text)
{
    return QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

} // namespace

struct PlanAids::Parts
{
    Parts(ZelGraphicsView* shown, QTreeWidget* rows, zelchipengine& source)
        : view(shown)
        , viewport(shown->viewport())
        , tree(rows)
        , engine(source)
        , plan(planEngineOf(source))
        , areas(*ZELChipViewDatabase::getInstance()->getScene(nullptr))
        , planLines(areas, [this](const std::string& resource) { return candidatesFor(resource); })
        , candidateLayer(new CandidateLayer(shown))
        , connectionLayer(new ConnectionLayer(shown))
    { }

    // The answers of the engine, which are asked for once until the design changes.
    const std::vector<zelconnection>& allConnections()
    {
        if (!answers)
            answers = plan.connections();
        return *answers;
    }

    const std::vector<zelconnection>& shownConnections()
    {
        return connections == Connections::All ? allConnections() : ofSelection;
    }

    // All connections of what is selected; if these are a few resources, with all pairs.
    std::vector<zelconnection> findOfSelection()
    {
        const ElementIdSet& selected = ZELChipViewDatabase::getInstance()->selectedIds();
        const std::string row = selectedRow();
        if (selected.isEmpty() && row.empty())
            return {};
        std::set<std::string> resources;
        const auto isSelected = [&](const std::string& resource, int site) {
            const bool isOne = (site >= 0 && selected.contains(site)) || (!row.empty() && isPartOf(resource, row));
            if (isOne && resources.size() <= MostWithAllPairs) // of more it is not asked which
                resources.insert(resource);
            return isOne;
        };
        std::vector<zelconnection> found;
        for (const zelconnection& each : allConnections()) {
            const bool isFromSelected = isSelected(each.from, each.fromSite);
            if (isSelected(each.to, each.toSite) || isFromSelected)
                found.push_back(each);
        }
        if (resources.size() <= MostWithAllPairs)
            addPairs(resources, found);
        return found;
    }

    void addPairs(const std::set<std::string>& resources, std::vector<zelconnection>& found)
    {
        std::set<std::pair<std::string, std::string>> known;
        const auto isNew
            = [&known](const zelconnection& each) { return known.insert(std::minmax(each.from, each.to)).second; };
        std::for_each(found.begin(), found.end(), isNew);
        for (const std::string& resource : resources) {
            for (const zelconnection& each : plan.connectionsOf(&resource)) {
                if (isNew(each))
                    found.push_back(each);
            }
        }
    }

    const std::vector<int>& candidatesFor(const std::string& resource)
    {
        const QByteArray key(resource.data(), static_cast<int>(resource.size()));
        auto known = sites.find(key);
        if (known == sites.end())
            known = sites.insert(key, plan.sitesFor(&resource));
        return *known;
    }

    [[nodiscard]] std::string selectedRow() const
    {
        const QList<QTreeWidgetItem*> rows = tree ? tree->selectedItems() : QList<QTreeWidgetItem*>();
        return rows.isEmpty() ? std::string() : toEngineText(rows.first()->data(0, RESOURCENAME).toString());
    }

    // Whether the resource of the selected row, or a part by which it is placed, has a place to go to.
    [[nodiscard]] bool isUnplaced(const std::string& resource) const
    {
        if (resource.empty() || !plan.refusalToPlace(&resource).empty())
            return false;
        const std::vector<std::string> parts = plan.partsOf(&resource);
        return std::any_of(
            parts.begin(), parts.end(), [this](const std::string& part) { return plan.siteOf(&part) < 0; });
    }

    ZelGraphicsView* const view;
    const QObject* const viewport; // only compared: the view is half destroyed when its viewport goes
    const QPointer<QTreeWidget> tree;
    zelchipengine& engine;
    zelplanengine& plan; // the same engine
    SiteAreas areas;
    PlanLines planLines;
    CandidateLayer* const candidateLayer; // children of the view
    ConnectionLayer* const connectionLayer;
    QTimer soon; // brings the aids up to date once after a series of changes
    std::optional<std::vector<zelconnection>> answers;
    std::vector<zelconnection> ofSelection; // the connections of what is selected
    QHash<QByteArray, std::vector<int>> sites; // by resource
    std::string candidate; // the resource whose sites are tinted; empty if none is
    Connections connections = Connections::OfSelection;
    Marks marks;
    bool areAllCurrent = false; // whether the lines of all connections are shown as they are
    bool areCandidatesCurrent = false; // whether the sites of `candidate` are
    bool areCandidatesShown = true;
};

PlanAids::PlanAids(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine)
    : QObject(view)
    , m_parts(std::make_unique<Parts>(view, tree, engine))
{
    m_parts->soon.setSingleShot(true);
    m_parts->soon.setInterval(0);
    connect(&m_parts->soon, &QTimer::timeout, this, &PlanAids::update);
    connect(ZELChipViewDatabase::getInstance(), &ZELChipViewDatabase::selectedElementsChanged, &m_parts->soon,
        qOverload<>(&QTimer::start));
    if (tree)
        connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, &m_parts->soon,
            qOverload<>(&QTimer::start));
    view->viewport()->installEventFilter(this);
    m_parts->soon.start();
}

PlanAids::~PlanAids() = default;

PlanAids::Connections PlanAids::connections() const
{
    return m_parts->connections;
}

void PlanAids::setConnections(Connections shown)
{
    m_parts->connections = shown;
    m_parts->areAllCurrent = false;
    update();
}

bool PlanAids::areCandidatesShown() const
{
    return m_parts->areCandidatesShown;
}

void PlanAids::setCandidatesShown(bool areShown)
{
    m_parts->areCandidatesShown = areShown;
    update();
}

void PlanAids::refresh()
{
    m_parts->areas.clear();
    m_parts->answers.reset();
    m_parts->sites.clear();
    m_parts->areAllCurrent = false;
    m_parts->areCandidatesCurrent = false;
    update();
}

void PlanAids::settle()
{
    if (m_parts->soon.isActive())
        update();
}

void PlanAids::update()
{
    m_parts->soon.stop();
    showConnections();
    showCandidates();
    updateMarks();
}

void PlanAids::updateMarks()
{
    Marks marks = m_parts->connectionLayer->marks();
    marks.setFlag(Mark::Candidate, m_parts->candidateLayer->isShown() && !m_parts->candidateLayer->isEmpty());
    if (std::exchange(m_parts->marks, marks) != marks)
        Q_EMIT marksChanged();
}

// While something is dragged, the probable sites light up in place of the tints.
void PlanAids::setDragged(bool isDragged)
{
    m_parts->candidateLayer->setShown(!isDragged);
    updateMarks();
}

PlanAids::Marks PlanAids::marks() const
{
    return m_parts->marks;
}

void PlanAids::paintSample(QPainter& painter, const QRectF& area, Mark mark)
{
    painter.save();
    if (mark == Mark::Candidate)
        CandidateLayer::paintSample(painter, area.toRect());
    else
        ConnectionLayer::paintSample(painter, area, mark);
    painter.restore();
}

void PlanAids::showConnections()
{
    Parts& parts = *m_parts;
    if (parts.connections == Connections::All) {
        if (!std::exchange(parts.areAllCurrent, true))
            parts.connectionLayer->setLines(
                parts.planLines.linesOf(parts.allConnections()), ConnectionLayer::Style::Thin);
        return;
    }
    parts.ofSelection = parts.connections == Connections::Off ? std::vector<zelconnection>() : parts.findOfSelection();
    parts.connectionLayer->setLines(parts.planLines.linesOf(parts.ofSelection), ConnectionLayer::Style::Strong);
}

void PlanAids::showCandidates()
{
    Parts& parts = *m_parts;
    const std::string row = parts.areCandidatesShown ? parts.selectedRow() : std::string();
    const std::string candidate = parts.isUnplaced(row) ? row : std::string();
    if (std::exchange(parts.areCandidatesCurrent, true) && candidate == parts.candidate)
        return;
    parts.candidate = candidate;
    std::vector<SitePlace> candidates;
    if (!parts.candidate.empty()) {
        for (int site : parts.candidatesFor(parts.candidate)) {
            if (const std::optional<SitePlace>& place = parts.areas.placeOf(site))
                candidates.push_back(*place);
        }
    }
    parts.candidateLayer->setCandidates(std::move(candidates));
}

QString PlanAids::toolTipAt(QPoint position)
{
    Parts& parts = *m_parts;
    if (const PlanLine* line = parts.connectionLayer->lineAt(position))
        return describe(*line, parts.shownConnections()[static_cast<std::size_t>(line->connection)]);
    if (parts.candidate.empty() || !parts.candidateLayer->isShown())
        return {};
    const ZELGraphicItemAttribute* element = elementAt(*parts.view, position);
    const int site = element ? element->itemId : -1;
    const std::vector<int>& candidates = parts.candidatesFor(parts.candidate);
    if (site < 0 || std::find(candidates.begin(), candidates.end(), site) != candidates.end())
        return {};
    const std::string id = std::to_string(site);
    return asSentence(fromEngineText(parts.engine.refusalReason(&parts.candidate, &id)));
}

bool PlanAids::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_parts->viewport)
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text = toolTipAt(help->pos());
        if (text.isEmpty())
            break;
        const QRect near(help->pos() - QPoint(ToolTipReach, ToolTipReach), QSize(2 * ToolTipReach, 2 * ToolTipReach));
        QToolTip::showText(help->globalPos(), asToolTip(text), m_parts->view->viewport(), near);
        return true;
    }
    case QEvent::DragEnter:
        setDragged(true);
        break;
    case QEvent::DragLeave:
    case QEvent::Drop:
    case QEvent::WindowBlocked: // by a dialog: the end of the drag is not reported any more
        setDragged(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace mirn::zelchipview
