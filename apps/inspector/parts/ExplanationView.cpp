#include "inspector/parts/ExplanationView.h"

#include "inspector/parts/Look.h"

#include <QEvent>
#include <QUrl>

namespace {

constexpr int mostCandidates = 100; // a page of text is slow to make

QString html(const QString& text)
{
    return text.toHtmlEscaped();
}

QString linkTo(const QString& kind, const QString& thing, const QString& words)
{
    QUrl address;
    address.setScheme(kind);
    address.setPath(thing);
    return QStringLiteral("<a href=\"%1\">%2</a>")
        .arg(html(QString::fromUtf8(address.toEncoded())), html(words));
}

} // namespace

ExplanationView::ExplanationView(QWidget* parent)
    : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("explanation"));
    setOpenLinks(false);
    setFrameShape(QFrame::NoFrame);
    connect(this, &QTextBrowser::anchorClicked, this, &ExplanationView::follow);
}

void ExplanationView::show(const Why::Reply& reply)
{
    m_reply = reply;
    render();
}

void ExplanationView::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        render(); // the colours stand in the text
}

QString ExplanationView::pageOf(const Why::Explanation& explanation) const
{
    const QColor colour =
        explanation.holds ? palette().color(QPalette::Text) : Look::faultColour(palette());
    QString page = QStringLiteral("<p><b style=\"color:%1\">%2</b></p><table cellspacing=\"0\">")
                       .arg(colour.name(), html(explanation.verdict));
    for (int i = 0; i < explanation.steps.size(); ++i)
        page += stepOf(explanation.steps.at(i), i == explanation.deciding);
    for (const Why::Resource& resource : explanation.resources)
        page += resourceOf(resource);
    const QColor plain = palette().color(QPalette::Text);
    for (const Why::Remark& remark : explanation.remarks)
        page += rowOf(QStringLiteral("·"), plain, remark.what, html(remark.value));
    for (const Why::Origin& origin : explanation.origins) {
        const QString version = tr("version %1").arg(origin.version);
        const QString words =
            origin.row == 0 ? version : tr("row %1 of %2").arg(origin.row).arg(version);
        page +=
            rowOf(QStringLiteral("·"), plain, origin.table,
                  linkTo(QStringLiteral("origin"),
                         QStringLiteral("%1/%2").arg(origin.table, explanation.subject.id), words));
    }
    return page + QStringLiteral("</table>");
}

QString ExplanationView::rowOf(const QString& mark, const QColor& colour, const QString& words,
                               const QString& value) const
{
    QColor faint = palette().color(QPalette::Text);
    const QColor base = palette().color(QPalette::Base);
    faint = QColor((faint.red() * 2 + base.red()) / 3, (faint.green() * 2 + base.green()) / 3,
                   (faint.blue() * 2 + base.blue()) / 3);
    const QString below = value.isEmpty()
        ? QString()
        : QStringLiteral("<br><span style=\"color:%1\">%2</span>").arg(faint.name(), value);
    return QStringLiteral("<tr><td style=\"color:%1;padding-right:6px\"><b>%2</b></td>"
                          "<td style=\"padding-bottom:4px\"><span style=\"color:%1\">%3</span>"
                          "%4</td></tr>")
        .arg(colour.name(), html(mark), html(words), below);
}

QString ExplanationView::stepOf(const Why::Step& step, bool decides) const
{
    const QColor plain = palette().color(QPalette::Text);
    const QColor fault = Look::faultColour(palette());
    switch (step.answer) {
    case Why::Step::Yes:
        return rowOf(QStringLiteral("✓"), plain, step.rule, html(step.value));
    case Why::Step::No:
        return rowOf(QStringLiteral("✗"), decides ? fault : plain, step.rule, html(step.value));
    default:
        return rowOf(QStringLiteral("–"), Look::unreadColour(palette()), step.rule, QString());
    }
}

QString ExplanationView::resourceOf(const Why::Resource& resource) const
{
    const QColor plain = palette().color(QPalette::Text);
    switch (resource.state) {
    case Why::Resource::There:
        return rowOf(QStringLiteral("·"), plain, resource.what, html(resource.path));
    case Why::Resource::NotFetched:
        return rowOf(QStringLiteral("·"), plain, resource.what,
                     html(tr("not on the disk; it would be %1").arg(resource.path)));
    default:
        return rowOf(QStringLiteral("·"), plain, resource.what, html(resource.cause));
    }
}

QString ExplanationView::candidates() const
{
    QString list = QStringLiteral("<p>%1</p><ul>").arg(html(tr("Which one is meant?")));
    const auto shown = m_reply.candidates.mid(0, mostCandidates);
    for (const Why::Subject& subject : shown)
        list +=
            QStringLiteral("<li>%1 %2</li>")
                .arg(linkTo(QStringLiteral("meant"), subject.id, subject.id), html(subject.name));
    list += QStringLiteral("</ul>");
    const auto more = m_reply.candidates.size() - shown.size();
    return more == 0 ? list
                     : list + QStringLiteral("<p>%1</p>").arg(html(tr("and %1 more").arg(more)));
}

void ExplanationView::render()
{
    QString page;
    for (const Why::Explanation& explanation : m_reply.explanations)
        page += pageOf(explanation);
    if (!m_reply.candidates.isEmpty())
        page += candidates();
    if (!m_reply.fault.isEmpty())
        page += QStringLiteral("<p style=\"color:%1\">%2</p>")
                    .arg(Look::faultColour(palette()).name(), html(m_reply.fault));
    setHtml(page);
}

void ExplanationView::follow(const QUrl& link)
{
    if (link.scheme() == QLatin1String("origin"))
        Q_EMIT sigOrigin(link.path());
    else
        Q_EMIT sigMeant(link.path());
}
