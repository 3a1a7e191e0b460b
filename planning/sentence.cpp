// SPDX-License-Identifier: MIT
#include "planning/sentence.h"

#include <QRegularExpression>

namespace mirn::zelchipview {

QString asSentence(const QString& text)
{
    static const QRegularExpression plainWord(QStringLiteral("^[a-z]+(?=[ ,:])"));
    return plainWord.match(text).hasMatch() ? text.left(1).toUpper() + text.mid(1) : text;
}

} // namespace mirn::zelchipview
