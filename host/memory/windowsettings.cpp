// SPDX-License-Identifier: MIT
#include "host/memory/windowsettings.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace mirn::zelchip {

namespace {

constexpr qint64 LargestSettings = 1 << 20; // bytes
constexpr int MostScripts = 200;
constexpr int LongestScript = 2000; // characters

const char PlaceKey[] = "window/place";
const char MaximizedKey[] = "window/maximized";
const QString ToggleGroup = QStringLiteral("view/");
const char HistoryKey[] = "console/history";
const char FolderKey[] = "files/folder";
const char RecentKey[] = "files/recent";

QByteArray checksum(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

// Opening a pipe would wait for its other end.
bool isUsable(const QString& fileName)
{
    const QFileInfo file(fileName);
    return (!file.exists() && !file.isSymLink()) || (file.isFile() && file.size() <= LargestSettings);
}

} // namespace

QString WindowSettings::userFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/zelchip/zelchip.ini");
}

WindowSettings::WindowSettings(const QString& fileName)
{
    if (isUsable(fileName))
        m_file = std::make_unique<QSettings>(fileName, QSettings::IniFormat);
}

QString WindowSettings::text(const char* key) const
{
    return m_file ? m_file->value(QLatin1String(key)).toString() : QString();
}

void WindowSettings::set(const char* key, const QVariant& value)
{
    if (m_file)
        m_file->setValue(QLatin1String(key), value);
}

QRect WindowSettings::place() const
{
    static const QRegularExpression Pattern(QStringLiteral("^(\\d{1,5})x(\\d{1,5}) (-?\\d{1,5}) (-?\\d{1,5})$"));
    const QRegularExpressionMatch match = Pattern.match(text(PlaceKey));
    return QRect(
        match.captured(3).toInt(), match.captured(4).toInt(), match.captured(1).toInt(), match.captured(2).toInt());
}

bool WindowSettings::isMaximized() const
{
    return text(MaximizedKey) == QLatin1String("true");
}

void WindowSettings::setPlace(const QRect& place, bool isMaximized)
{
    set(PlaceKey,
        QStringLiteral("%1x%2 %3 %4")
            .arg(QString::number(place.width()), QString::number(place.height()), QString::number(place.x()),
                QString::number(place.y())));
    set(MaximizedKey, isMaximized);
}

// Qt takes a damaged state at its word, so it is stored with a checksum.
QByteArray WindowSettings::arrangement(const QString& window) const
{
    const QByteArray stored
        = m_file ? m_file->value(window + QStringLiteral("/docks")).toString().toLatin1() : QByteArray();
    const QByteArray state = QByteArray::fromBase64(stored.mid(stored.indexOf(' ') + 1));
    return stored.startsWith(checksum(state) + ' ') ? state : QByteArray();
}

void WindowSettings::setArrangement(const QString& window, const QByteArray& state)
{
    if (m_file)
        m_file->setValue(
            window + QStringLiteral("/docks"), QString::fromLatin1(checksum(state) + ' ' + state.toBase64()));
}

bool WindowSettings::isOn(const QString& name, bool usually) const
{
    const QString stored = m_file ? m_file->value(ToggleGroup + name).toString() : QString();
    return stored == QLatin1String("true") || (usually && stored != QLatin1String("false"));
}

void WindowSettings::setOn(const QString& name, bool isOn)
{
    if (m_file)
        m_file->setValue(ToggleGroup + name, isOn);
}

QStringList WindowSettings::history() const
{
    if (!m_file)
        return {};
    return m_file->value(QLatin1String(HistoryKey)).toStringList().mid(0, MostScripts);
}

void WindowSettings::setHistory(const QStringList& history)
{
    QStringList scripts;
    for (const QString& script : history) {
        if (script.size() <= LongestScript)
            scripts.append(script);
    }
    const QStringList newest = scripts.mid(qMax(0, static_cast<int>(scripts.size()) - MostScripts));
    set(HistoryKey, newest);
}

QString WindowSettings::folder() const
{
    const QString folder = text(FolderKey);
    return QFileInfo(folder).isDir() ? folder : QString();
}

void WindowSettings::setFolder(const QString& folder)
{
    set(FolderKey, folder);
}

QStringList WindowSettings::recent() const
{
    if (!m_file)
        return {};
    m_file->sync();
    return m_file->value(QLatin1String(RecentKey)).toStringList();
}

void WindowSettings::setRecent(const QStringList& paths)
{
    set(RecentKey, paths);
    write();
}

void WindowSettings::write()
{
    if (m_file)
        m_file->sync();
}

} // namespace mirn::zelchip
