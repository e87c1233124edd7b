#include "pathexpressionassistant.h"

#include "diagnostics.h"
#include "pathexpressionlineedit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPolygon>
#include <QStringListModel>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>

CORVEL_DIAGNOSTICS("PathExpressionAssistant");

// Nobody reads further down a list.
static const int MostOptions = 200;
static const int MostVisible = 15;
static const int WaveSize = 2; // pixels

PathExpressionAssistant::PathExpressionAssistant(QLineEdit* edit, ListMatches listMatches, FindError findError)
    : QObject(edit)
    , m_edit(edit)
    , m_own(nullptr)
    , m_options(new QStringListModel(this))
    , m_completer(new QCompleter(m_options, this))
    , m_listMatches(listMatches)
    , m_findError(findError)
    , m_isCheckPosted(false)
    , m_isPainting(false)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("PathExpressionAssistant");
    if (!qobject_cast<PathExpressionLineEdit*>(edit)) {
        m_own = new PathExpression(this);
        m_own->setConsiderSubMessages(true);
        processReturnPressed();
    }
    // What the expression lists is what begins so already.
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setMaxVisibleItems(MostVisible);
    edit->setCompleter(m_completer);
    m_completer->popup()->setLayoutDirection(Qt::LeftToRight); // as the line edit shows paths in every window
    edit->installEventFilter(this);
    connect(edit, SIGNAL(textEdited(const QString&)), this, SLOT(offerOptions()));
    connect(edit, SIGNAL(textChanged(const QString&)), this, SLOT(checkLater()));
    connect(edit, SIGNAL(returnPressed()), this, SLOT(processReturnPressed()));
    connect(m_completer, SIGNAL(activated(const QString&)), this, SLOT(takeOption()));
    check();
}

PathExpressionAssistant::~PathExpressionAssistant()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("PathExpressionAssistant");
    if (getEdit())
        setProblem(QString());
}

/** Null as soon as it goes, when it is a line edit no more. */
QLineEdit* PathExpressionAssistant::getEdit() const
{
    CORVEL_DEBUG_HOOK();
    return qobject_cast<QLineEdit*>(m_edit.data());
}

const QString& PathExpressionAssistant::getProblem() const
{
    CORVEL_DEBUG_HOOK();
    return m_problem;
}

PathExpression::Parts PathExpressionAssistant::getParts() const
{
    CORVEL_DEBUG_HOOK();
    const PathExpressionLineEdit* editor = qobject_cast<PathExpressionLineEdit*>(m_edit.data());
    return editor ? editor->getParts() : PathExpression::AllParts;
}

/** The expression that is edited now, whose matches are followed from now on; may be null. */
PathExpression* PathExpressionAssistant::followExpression()
{
    CORVEL_DEBUG_HOOK();
    PathExpressionLineEdit* editor = qobject_cast<PathExpressionLineEdit*>(m_edit.data());
    PathExpression* expression = editor ? editor->getPathExpression() : m_own;
    if (expression == m_followed)
        return expression;
    if (m_followed)
        disconnect(m_followed, nullptr, this, nullptr);
    m_followed = expression;
    if (expression)
        connect(expression, SIGNAL(matchesMayHaveChanged()), this, SLOT(checkLater()));
    return expression;
}

void PathExpressionAssistant::offerOptions()
{
    CORVEL_DEBUG_HOOK();
    const QString typed = getEdit()->text();
    if (m_own) {
        m_given = typed;
        m_own->setStringPrefix(typed, PathExpression::AllParts);
    }
    const PathExpression* expression = followExpression();
    QStringList options;
    if (expression)
        options = m_listMatches(*expression, getParts(), MostOptions);
    if (options.size() == 1 && options.first() == typed)
        options.clear();
    m_options->setStringList(options);
    checkLater();
}

void PathExpressionAssistant::takeOption()
{
    CORVEL_DEBUG_HOOK();
    // The line edit takes the text at the same signal, and maybe after this: so it is used one turn later.
    const bool hasExpression = qobject_cast<PathExpressionLineEdit*>(m_edit.data());
    QTimer::singleShot(0, hasExpression ? m_edit.data() : static_cast<QObject*>(this), SLOT(processReturnPressed()));
}

void PathExpressionAssistant::processReturnPressed()
{
    CORVEL_DEBUG_HOOK();
    if (m_own && getEdit()) {
        m_given = getEdit()->text();
        m_own->setString(m_given);
    }
    checkLater();
}

void PathExpressionAssistant::checkLater()
{
    CORVEL_DEBUG_HOOK();
    if (m_isCheckPosted)
        return;
    // An edit is told in several ways.
    m_isCheckPosted = true;
    QTimer::singleShot(0, this, SLOT(check()));
}

void PathExpressionAssistant::check()
{
    CORVEL_DEBUG_HOOK();
    m_isCheckPosted = false;
    if (!getEdit())
        return;
    // A text that somebody set is what it says, and not the beginning of something.
    if (m_own && m_given != getEdit()->text())
        processReturnPressed();
    const PathExpression* expression = followExpression();
    QString problem;
    if (expression && !getEdit()->text().isEmpty()) {
        problem = m_findError(*expression);
        if (problem.isEmpty() && expression->getMatchingMessageInfos().isEmpty() &&
            expression->getMatchingFieldInfos().isEmpty())
            problem = tr("No known message type or field is called so");
    }
    setProblem(problem);
}

void PathExpressionAssistant::setProblem(const QString& problem)
{
    CORVEL_DEBUG_HOOK();
    if (problem == m_problem)
        return;
    if (m_problem.isEmpty())
        m_formerDescription = getEdit()->accessibleDescription();
    // One that somebody else wrote meanwhile stays.
    if (m_problem.isEmpty() || getEdit()->accessibleDescription() == m_problem)
        getEdit()->setAccessibleDescription(problem.isEmpty() ? m_formerDescription : problem);
    m_problem = problem;
    getEdit()->update();
    Q_EMIT problemChanged(problem);
}

bool PathExpressionAssistant::eventFilter(QObject* watched, QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    if (watched != m_edit)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        checkLater(); // of an expression that was set since
    } else if (event->type() == QEvent::ToolTip && !m_problem.isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           Qt::convertFromPlainText(m_problem, Qt::WhiteSpaceNormal), getEdit());
        return true;
    } else if (event->type() == QEvent::Paint && !m_problem.isEmpty() && !m_isPainting) {
        // The line edit first, as if nobody were here, and the mark on top of it.
        m_isPainting = true;
        QCoreApplication::sendEvent(m_edit, event);
        m_isPainting = false;
        drawMark();
        return true;
    } else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down &&
               !getEdit()->isReadOnly() && !m_completer->popup()->isVisible()) {
        if (PathExpressionLineEdit* editor = qobject_cast<PathExpressionLineEdit*>(m_edit.data()))
            editor->processTextEdited(); // from here on it is a beginning
        offerOptions();
        m_completer->setCompletionPrefix(getEdit()->text());
        if (m_options->rowCount() > 0)
            m_completer->complete();
        return true;
    }
    return false;
}

void PathExpressionAssistant::drawMark()
{
    CORVEL_DEBUG_HOOK();
    const QPalette palette = getEdit()->palette();
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    // Red that is told from either ground; in tones without colour it is a wave as well.
    const QColor red = base.lightness() < text.lightness() ? QColor(255, 138, 128) : QColor(190, 0, 20);
    QPolygon wave;
    const int bottom = getEdit()->height() - 3;
    for (int x = 4; x < getEdit()->width() - 3; x += WaveSize)
        wave << QPoint(x, bottom - (wave.size() % 2) * WaveSize);
    QPainter painter(getEdit());
    painter.setPen(red);
    painter.drawPolyline(wave);
}
