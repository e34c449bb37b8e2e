#include "s3fileiconengine.h"

#include <QFileIconProvider>
#include <QFileInfo>

s3FileIconEngine::s3FileIconEngine(const QString &path)
    : m_path(path)
{
}

void s3FileIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    icon().paint(painter, rect, Qt::AlignCenter, mode, state);
}

QSize s3FileIconEngine::actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return icon().actualSize(size, mode, state);
}

QPixmap s3FileIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return icon().pixmap(size, mode, state);
}

QPixmap s3FileIconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale)
{
    return icon().pixmap(size / scale, scale, mode, state);
}

QList<QSize> s3FileIconEngine::availableSizes(QIcon::Mode mode, QIcon::State state)
{
    return icon().availableSizes(mode, state);
}

QIconEngine *s3FileIconEngine::clone() const
{
    return new s3FileIconEngine(*this);
}

bool s3FileIconEngine::isNull()
{
    // Whether the desktop has a picture shows when it is asked; that there is a file to ask for is known.
    return m_loaded && m_icon.isNull();
}

const QIcon &s3FileIconEngine::icon()
{
    if (!m_loaded) {
        m_icon = QFileIconProvider().icon(QFileInfo(m_path));
        m_loaded = true;
    }
    return m_icon;
}
