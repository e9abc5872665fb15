// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_SEARCHTEXT_H
#define SESSIONLIBRARY_SEARCHTEXT_H

#include <QStringList>
#include <QVariantList>

namespace sessionlibrary {

/// What rows have to fulfil: each condition, with the values of its question marks.
struct Conditions {
    QStringList sql;
    QVariantList values; ///< of all, in order

    /// Adds a condition.
    void add(const QString &condition, const QVariantList &bound);
    /// " WHERE ... AND ..."; empty without conditions.
    QString where() const;
};

/// Adds what a session has to fulfil so that each word of \a text begins a word of its learners,
/// its file's name, its manikin's name, a note or its protocol. Whatever is typed means itself.
void addSearch(Conditions &conditions, const QString &text);

/// Adds what a session has to fulfil to have \a name, word by word, anywhere.
void addMention(Conditions &conditions, const QString &name);

} // namespace sessionlibrary

#endif
