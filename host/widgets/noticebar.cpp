// SPDX-License-Identifier: MIT
#include "host/widgets/noticebar.h"

#include "host/look/palettes.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace mirn::zelchip {

namespace {

constexpr int NoticeMargin = 6; // device-independent pixels, as is the next
constexpr int NoticeGap = 3; // above and below

const char LightNotice[] = "QToolBar { background: #fff1cc; border: none; border-bottom: 1px solid #d9bd74; }"
                           "QLabel { color: #453200; }";
const char DarkNotice[] = "QToolBar { background: #4d3f1a; border: none; border-bottom: 1px solid #7d6a35; }"
                          "QLabel { color: #f6e7c0; }";

} // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QToolBar(tr("Notice"), parent)
{
    setObjectName(QStringLiteral("notice"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false); // it shows and hides itself
    auto* content = new QWidget(this);
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(NoticeMargin, NoticeGap, NoticeMargin, NoticeGap);
    m_text = new QLabel(content);
    m_text->setObjectName(QStringLiteral("noticeText"));
    m_text->setTextFormat(Qt::PlainText); // a path may look like mark-up
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_button = new QPushButton(content);
    m_button->setObjectName(QStringLiteral("noticeButton"));
    row->addWidget(m_text, 1);
    row->addWidget(m_button, 0, Qt::AlignTop);
    content->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    addWidget(content);
    chooseColors();
    hide();
    connect(m_button, &QPushButton::clicked, this, &NoticeBar::pressed);
}

void NoticeBar::show(const QString& text, const QString& button)
{
    m_text->setText(text);
    m_button->setText(button);
    m_button->setVisible(!button.isEmpty());
    adjustHeight();
    setVisible(!text.isEmpty());
}

// A tool bar does not ask a wrapped text how high it is.
void NoticeBar::adjustHeight()
{
    const int room = width() - (m_button->text().isEmpty() ? 0 : m_button->sizeHint().width()) - 4 * NoticeMargin;
    const int height = qMax(m_text->heightForWidth(qMax(room, 1)), m_button->sizeHint().height()) + 2 * NoticeGap;
    m_text->parentWidget()->setFixedHeight(height);
}

void NoticeBar::resizeEvent(QResizeEvent* event)
{
    QToolBar::resizeEvent(event);
    adjustHeight();
}

void NoticeBar::changeEvent(QEvent* event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_button)
        chooseColors();
}

void NoticeBar::chooseColors()
{
    const QString style = QString::fromLatin1(isDark(palette()) ? DarkNotice : LightNotice);
    if (styleSheet() != style)
        setStyleSheet(style);
}

} // namespace mirn::zelchip
