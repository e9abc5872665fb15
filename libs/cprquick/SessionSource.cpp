// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionSource.h"

#include <QQmlEngine>
#include <QQmlFile>

#include <utility>

namespace cprquick {

SessionSource::SessionSource(QObject *parent) : QObject(parent)
{
    connect(&m_loader, &SessionLoader::progressed, this, &SessionSource::setProgress);
    connect(&m_loader, &SessionLoader::finished, this, [this] {
        setProgress(1);
        show(m_loader.handOver());
        Q_EMIT isLoadingChanged();
    });
}

SessionSource::~SessionSource() = default;

void SessionSource::setFile(const QUrl &file)
{
    m_loader.abandon();
    show({});
    setProgress(0);
    if (std::exchange(m_file, file) != file)
        Q_EMIT fileChanged();
    if (!file.isEmpty()) {
        // A name without a scheme comes from a page that stands in no file.
        const QString name = QQmlFile::urlToLocalFileOrQrc(file);
        m_loader.load(name.isEmpty() ? file.toString() : name, SessionLoader::Kind::File);
    }
    Q_EMIT isLoadingChanged();
}

void SessionSource::show(SessionLoader::Result result)
{
    // The old session lives until nobody shows it any more.
    std::swap(m_result, result);
    // A page that is handed an object without a parent would own it.
    if (m_result.session)
        QQmlEngine::setObjectOwnership(m_result.session.get(), QQmlEngine::CppOwnership);
    if (m_result.session != result.session || m_result.problem != result.problem)
        Q_EMIT sessionChanged();
}

void SessionSource::setProgress(double progress)
{
    if (std::exchange(m_progress, progress) != progress)
        Q_EMIT progressChanged();
}

} // namespace cprquick
