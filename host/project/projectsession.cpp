// SPDX-License-Identifier: MIT
#include "host/project/projectsession.h"

#include "engine/model/device.h"
#include "engine/project.h"
#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/design/designtcl.h"
#include "host/tcl/translation.h"
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zelproject.h"
#include "platform/contract/zeltext.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace mirn::zelchip {

// A parser that reads its drawing before the chip view asks for it. The host thus learns of errors while the previous
// project is still on the screen, and no drawing is read twice. The session owns it until the controller takes it over.
class PreparedParser final : public SVGParser
{
public:
    // Reads the drawing. The next loadSVGElements(), if it is for the same file, returns this result at once.
    bool prepare(const std::string& drawingFile, const std::string& workingPath);

    bool loadSVGElements(const std::string& drawingFile, const std::string& workingPath) override;

private:
    std::string m_preparedFile; // empty if there is none
    bool m_isLoaded = false;
};

bool PreparedParser::prepare(const std::string& drawingFile, const std::string& workingPath)
{
    m_isLoaded = SVGParser::loadSVGElements(drawingFile, workingPath);
    m_preparedFile = drawingFile;
    return m_isLoaded;
}

bool PreparedParser::loadSVGElements(const std::string& drawingFile, const std::string& workingPath)
{
    const bool isPrepared = !m_preparedFile.empty() && m_preparedFile == drawingFile;
    m_preparedFile.clear();
    return isPrepared ? m_isLoaded : SVGParser::loadSVGElements(drawingFile, workingPath);
}

namespace {

const QString ProjectFileName = QStringLiteral("project.json");

// The working file that the chip view names to the parser.
const QString WorkingFileName = QStringLiteral("/zelsvg.temp");

// An empty filter file, because the chip view complains if it cannot open one, even if the device has none.
const QString NoKindsFile = QStringLiteral(":/zelchip/nokinds.txt");

// The implementation of a project that has none of its own.
const QString ScratchImplementation = QStringLiteral("scratch");

constexpr int MostWarningsWithAnError = 5;

std::string fileNameBytes(const QString& fileName)
{
    return QFile::encodeName(fileName).toStdString();
}

// Returns the names as alternatives for a message.
QString implementationNames(const zelengine::Project& project)
{
    QStringList names;
    for (const zelengine::Implementation& implementation : project.implementations)
        names.append(QLatin1Char('"') + implementation.name + QLatin1Char('"'));
    return names.isEmpty() ? tr("none, because the project has none") : names.join(tr(" or "));
}

std::unique_ptr<MirnImplementation> newImplementation(const QString& name, const QString& directory)
{
    return std::make_unique<MirnImplementation>(name.toStdString(), fileNameBytes(directory));
}

} // namespace

ProjectSession::ProjectSession() = default;

ProjectSession::~ProjectSession()
{
    deactivate();
}

std::unique_ptr<ProjectSession> ProjectSession::open(
    const QString& path, QString* error, DoubtfulLock lock, const QString& implementation)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        *error = tr("%1: there is no such file or folder.").arg(path);
        return nullptr;
    }
    std::unique_ptr<ProjectSession> session(new ProjectSession); // the constructor is private
    session->m_implementation = implementation;
    bool isOpen = false;
    if (info.isDir())
        isOpen = session->openProject(info.absoluteFilePath(), error);
    else if (info.fileName() == ProjectFileName)
        isOpen = session->openProject(info.absolutePath(), error);
    else
        isOpen = session->openDrawing(info.absoluteFilePath(), error);
    if (!isOpen || !session->readDrawing(error))
        return nullptr;
    if (session->m_engine->device().filterFile().isEmpty())
        session->m_engine->setFilterFile(NoKindsFile);
    session->m_editor = std::make_unique<DesignEditor>(*session->m_engine, session->m_implementationDirectory);
    session->m_path = info.absoluteFilePath();
    const QString doubt
        = lock == DoubtfulLock::IsTakenOver ? session->m_editor->takeOver() : session->m_editor->lockInDoubt();
    session->m_recoveryMessages = session->m_editor->recover(changeCommand(*session->m_editor));
    if (!doubt.isEmpty())
        session->m_recoveryMessages.append(doubt);
    return session;
}

bool ProjectSession::openProject(const QString& directory, QString* error)
{
    if (!QFileInfo::exists(directory + QLatin1Char('/') + ProjectFileName)) {
        *error = tr("%1: the folder is no project: it has no %2.").arg(directory, ProjectFileName);
        return false;
    }
    m_engine = zelengine::ReferenceEngine::open(directory, error, &m_warnings);
    // The warnings come along, because an ignored key is often a misspelt one that is missing elsewhere.
    if (!m_engine) {
        *error = (QStringList(*error) + m_warnings.mid(0, MostWarningsWithAnError)).join(QLatin1Char('\n'));
        return false;
    }
    *error = m_engine->device().drawingError();
    if (!error->isEmpty())
        return false;
    const QString filterError = m_engine->device().filterError();
    if (!filterError.isEmpty())
        m_warnings.append(tr("%1, so no kinds of elements can be marked").arg(filterError));
    const zelengine::Project& project = m_engine->project();
    m_title = m_engine->device().name() + QLatin1Char('/') + project.name;
    m_flow = project.flow;
    m_drawingFile = m_engine->device().drawingFile();
    return useImplementation(error);
}

bool ProjectSession::useImplementation(QString* error)
{
    const zelengine::Project& project = m_engine->project();
    const bool isDefault = m_implementation.isEmpty();
    const zelengine::Implementation* implementation
        = project.implementation(isDefault ? project.defaultImplementation : m_implementation);
    if (!implementation && isDefault)
        return useScratchProject(project.name, error);
    if (!implementation) {
        *error = tr("%1: there is no implementation \"%2\", expected %3.")
                     .arg(project.directory, m_implementation, implementationNames(project));
        return false;
    }
    m_implementation = implementation->name;
    m_implementationDirectory = implementation->directory;
    // If the folder cannot be created, the parser does without its working file.
    QDir().mkpath(m_implementationDirectory);
    return true;
}

bool ProjectSession::openDrawing(const QString& file, QString* error)
{
    if (!m_implementation.isEmpty()) {
        *error = tr("%1: a drawing has no implementations, expected a project folder.").arg(file);
        return false;
    }
    m_isBareDrawing = true;
    m_engine = zelengine::ReferenceEngine::forDrawing(file);
    m_drawingFile = file;
    m_title = QFileInfo(file).fileName();
    return useScratchProject(m_title, error);
}

bool ProjectSession::useScratchProject(const QString& name, QString* error)
{
    m_scratchName = name;
    m_implementationDirectory = scratchDirectory();
    if (m_implementationDirectory.isEmpty()) {
        *error = tr("%1: there is no place for scratch files; neither the cache folder nor the temporary folder can be "
                    "written.")
                     .arg(name);
        return false;
    }
    return true;
}

std::unique_ptr<MirnProject> ProjectSession::newProject() const
{
    if (!m_scratchName.isEmpty()) {
        auto scratch = std::make_unique<MirnProject>(m_scratchName.toStdString());
        scratch->addImplementation(newImplementation(ScratchImplementation, m_implementationDirectory));
        scratch->setDefaultImplementation(ScratchImplementation.toStdString());
        return scratch;
    }
    const zelengine::Project& project = m_engine->project();
    auto result = std::make_unique<MirnProject>(project.name.toStdString());
    for (const zelengine::Implementation& implementation : project.implementations)
        result->addImplementation(newImplementation(implementation.name, implementation.directory));
    result->setDefaultImplementation(m_implementation.toStdString());
    return result;
}

// Returns the same folder whenever this drawing is opened, so that cached files help the next time.
QString ProjectSession::scratchDirectory()
{
    const QByteArray key = QCryptographicHash::hash(m_drawingFile.toUtf8(), QCryptographicHash::Sha1).toHex();
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    const QString directory = cache + QStringLiteral("/drawings/") + QString::fromLatin1(key);
    if (QDir().mkpath(directory) && QFileInfo(directory).isWritable())
        return directory;
    m_temporaryDirectory = std::make_unique<QTemporaryDir>();
    return m_temporaryDirectory->isValid() ? m_temporaryDirectory->path() : QString();
}

bool ProjectSession::readDrawing(QString* error)
{
    if (m_drawingFile.isEmpty()) {
        *error = tr("%1: the device names no drawing.").arg(m_title);
        return false;
    }
    m_parser = std::make_unique<PreparedParser>();
    const QString workingFile = m_implementationDirectory + WorkingFileName;
    const bool isRead = m_parser->prepare(fileNameBytes(m_drawingFile), fileNameBytes(workingFile));
    *error = QString::fromStdString(m_parser->errorString());
    for (const std::string& warning : m_parser->warnings())
        m_warnings.append(QString::fromStdString(warning));
    // Nothing was cached, so an empty folder is not left behind.
    if (!isRead && !m_temporaryDirectory)
        QDir().rmdir(m_implementationDirectory);
    return isRead;
}

// A site's outline is the lowest of the rects with its id.
QHash<int, QPointF> ProjectSession::sitePoints() const
{
    QHash<int, QPointF> points;
    if (!m_parser)
        return points;
    m_parser->visitGraphicItems([&](const zel_SingleGraphItem& item) {
        const auto* rect = dynamic_cast<const zel_Rect*>(&item);
        if (rect && !points.contains(rect->id) && m_engine->device().site(rect->id))
            points.insert(rect->id, QPointF(rect->x + rect->width / 2, rect->y + rect->height / 2));
        return true;
    });
    return points;
}

void ProjectSession::activate()
{
    m_isActive = true;
    MirnProjectManager::getProjectManager()->setProject(newProject());
    zelproject::getInstance()->setFlowName(toEngineText(m_flow));
    // The controller creates one parser, which gets the drawing that was read already; any later one reads for itself.
    SVGParser::setFactory([this]() -> std::unique_ptr<SVGParser> {
        if (m_parser)
            return std::move(m_parser);
        return std::make_unique<SVGParser>();
    });
}

void ProjectSession::deactivate()
{
    if (!m_isActive)
        return;
    m_isActive = false;
    SVGParser::setFactory(nullptr);
    MirnProjectManager::getProjectManager()->setProject(nullptr);
    zelproject::getInstance()->setFlowName({});
}

zelchipengine* ProjectSession::engine() const
{
    return m_engine.get();
}

bool ProjectSession::hasFilter() const
{
    return QFileInfo(m_engine->device().filterFile()).isFile();
}

} // namespace mirn::zelchip
