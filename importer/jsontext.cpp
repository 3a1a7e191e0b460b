// SPDX-License-Identifier: MIT
#include "importer/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace mirn::zelimporter {

QByteArray jsonText(const QString& text)
{
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

} // namespace mirn::zelimporter
