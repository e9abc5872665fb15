// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_PLOTITEM_H
#define CPRQUICK_PLOTITEM_H

#include "cprquick_export.h"

#include <CPRData.h>
#include <sessionplot/Scales.h>
#include <sessionplot/Style.h>

#include <QQuickPaintedItem>
#include <QtQml/qqml.h>

#include <memory>

namespace cprquick {

class PlotSource;

/// An item that shows a session over time: what wave and timeline have in common.
///
/// It reads the session at most once a frame, and not at all while it is not visible. The time that
/// is shown is from..to, or, with a span, the last span ms, which follows a running session.
class CPRQUICK_EXPORT PlotItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData *session   READ session   WRITE setSession  NOTIFY sessionChanged)
    /// ms of session time.
    Q_PROPERTY(int      from      READ from      WRITE setFrom     NOTIFY windowChanged)
    /// ms of session time; -1, as it is from the start, for the end of the session.
    Q_PROPERTY(int      to        READ to        WRITE setTo       NOTIFY windowChanged)
    /// ms; when it is positive the end of the session is shown and from and to do not count.
    Q_PROPERTY(int      span      READ span      WRITE setSpan     NOTIFY windowChanged)
    /// @{
    /// The session times, ms, between which zoom(), pan() and fit() move, where a session shares a
    /// window of time with another one: also before its start and behind its end. As they are from
    /// the start, both 0, the session's own.
    Q_PROPERTY(int      earliest  READ earliest  WRITE setEarliest NOTIFY windowChanged)
    Q_PROPERTY(int      latest    READ latest    WRITE setLatest   NOTIFY windowChanged)
    /// @}
    /// The session time that the time axis calls 0:00, ms.
    Q_PROPERTY(int      zero      READ zero      WRITE setZero     NOTIFY windowChanged)
    /// Drawn for a dark page.
    Q_PROPERTY(bool     dark      READ isDark    WRITE setDark     NOTIFY lookChanged)
    /// Pixels; 0, as it is from the start, for the size of the application's font.
    Q_PROPERTY(qreal    textSize  READ textSize  WRITE setTextSize NOTIFY lookChanged)
    /// @{
    /// What is really shown, ms, and the length of the session, ms. Brought up to date with each
    /// frame.
    Q_PROPERTY(int      shownFrom READ shownFrom                   NOTIFY shownChanged)
    Q_PROPERTY(int      shownTo   READ shownTo                     NOTIFY shownChanged)
    Q_PROPERTY(int      length    READ length                      NOTIFY lengthChanged)
    /// @}
    /// How much of the session the link lost, ms. Brought up to date with each frame.
    Q_PROPERTY(int      lost      READ lost                        NOTIFY lostChanged)
    /// @{
    /// A time that a page marks, ms, and where in the item it lies. The item draws nothing there, so
    /// a mark that moves costs no repaint.
    Q_PROPERTY(int      cursor    READ cursor    WRITE setCursor   NOTIFY cursorChanged)
    Q_PROPERTY(qreal    cursorX   READ cursorX                     NOTIFY cursorXChanged)
    /// @}
    /// Where in the item time is drawn. Known after the first frame.
    Q_PROPERTY(QRectF   plotArea  READ plotArea                    NOTIFY plotAreaChanged)
    // clang-format on

public:
    ~PlotItem() override;

    /// @{
    /// Getters and setters of the properties.
    CPRData *session() const;
    void setSession(CPRData *session);
    int from() const { return m_from; }
    void setFrom(int msecs);
    int to() const { return m_to; }
    void setTo(int msecs);
    int span() const { return m_span; }
    void setSpan(int msecs);
    int earliest() const { return m_earliest; }
    void setEarliest(int msecs);
    int latest() const { return m_latest; }
    void setLatest(int msecs);
    int zero() const { return m_zero; }
    void setZero(int msecs);
    bool isDark() const { return m_isDark; }
    void setDark(bool dark);
    qreal textSize() const { return m_textSize; }
    void setTextSize(qreal size);
    int shownFrom() const { return m_shownFrom; }
    int shownTo() const { return m_shownTo; }
    int length() const { return m_length; }
    int lost() const { return m_lost; }
    QRectF plotArea() const { return m_plotArea; }
    int cursor() const { return m_cursor; }
    void setCursor(int msecs);
    qreal cursorX() const { return xAt(m_cursor); }
    /// @}

    /// @{
    /// Where in the item a time (ms) lies, and the time there; both also outside what is shown. For
    /// handlers: a binding does not notice that the shown time has moved, one to cursorX does.
    Q_INVOKABLE qreal xAt(int msecs) const;
    Q_INVOKABLE int timeAt(qreal x) const;
    /// @}
    /// Shows a time that is \a factor times shorter; what is drawn at \a x stays there.
    Q_INVOKABLE void zoom(qreal factor, qreal x);
    /// The same; the time that stays where it is, ms.
    Q_INVOKABLE void zoomAt(qreal factor, int msecs);
    /// Moves along the session by \a msecs, not beyond its ends.
    Q_INVOKABLE void pan(int msecs);
    /// Shows the time from \a from to \a to, ms, but at least a second and nothing outside the
    /// session.
    Q_INVOKABLE void showTime(int from, int to);
    /// Shows all of the session.
    Q_INVOKABLE void fit();
    /// Moves so far that \a msecs is shown.
    Q_INVOKABLE void reveal(int msecs);

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void sessionChanged();
    void windowChanged();
    void lookChanged();
    void shownChanged();
    void lengthChanged();
    void lostChanged();
    void plotAreaChanged();
    void cursorChanged();
    void cursorXChanged();
    /// @}

protected:
    /// Shows nothing until it has a session.
    explicit PlotItem(QQuickItem *parent);

    /// Null when there is no session.
    const PlotSource *source() const { return m_source.get(); }
    /// @{
    /// The colours and the size of texts, pixels, to draw with.
    sessionplot::Theme theme() const;
    qreal usedTextSize() const;
    /// @}
    /// For paint(), which may run on another thread: the change is announced afterwards.
    void setPlotArea(const QRectF &area);
    /// Draws anew with the next frame.
    void requestPaint();

    /// @{
    /// See QQuickItem.
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void updatePolish() override;
    /// @}

private:
    void setWindow(int from, int to, int span);
    void setBounds(int earliest, int latest, int zero);
    sessionplot::TimeRange bounds() const;
    void showRange(qint64 from, qint64 length);
    void findShown();
    sessionplot::TimeScale timeScale() const;

    std::shared_ptr<PlotSource> m_source;
    int m_from = 0;
    int m_to = -1;
    int m_span = 0;
    int m_earliest = 0;
    int m_latest = 0;
    int m_zero = 0;
    bool m_isDark = false;
    qreal m_textSize = 0;
    int m_shownFrom = 0;
    int m_shownTo = 0;
    int m_length = 0;
    int m_lost = 0;
    QRectF m_plotArea;
    int m_cursor = 0;
};

} // namespace cprquick

#endif
