#pragma once

#include <QIcon>
#include <QIconEngine>

/// The desktop's icon for a file, asked for only when it is painted. Asking costs the desktop's icon theme, its media
/// types and the plugins for all picture formats, a tenth of a whole run, and a run without a box paints no icon.
/// GUI thread.
class s3FileIconEngine : public QIconEngine
{
public:
    explicit s3FileIconEngine(const QString &path);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine *clone() const override;
    bool isNull() override;

private:
    s3FileIconEngine(const s3FileIconEngine &) = default;

    const QIcon &icon();

    QString m_path;
    QIcon m_icon;
    bool m_loaded = false;
};
