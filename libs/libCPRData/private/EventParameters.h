// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef EVENTPARAMETERS_H
#define EVENTPARAMETERS_H

#include "CPREventBase.h"

#include <algorithm>
#include <vector>

/// The parameters of one event, in the order in which they came.
///
/// They stand in a plain list until somebody asks for the observable map. From then on the map
/// alone holds them: QML and hosts write into it without a word to anybody. It is not made at once,
/// since for each new key it builds its meta-object anew; for the statistics of a session that
/// costs more than all its compressions.
class EventParameters {
public:
    int count() const { return m_map ? m_map->count() : static_cast<int>(m_list.size()); }

    bool contains(CPREventBase::ParameterType type) const
    {
        return m_map ? m_map->contains(CPREventBase::parameterKey(type))
                     : find(type) != m_list.end();
    }

    /// Invalid when it is not there.
    QVariant value(CPREventBase::ParameterType type) const
    {
        if (m_map)
            return m_map->value(CPREventBase::parameterKey(type));
        const auto found = find(type);
        return found == m_list.end() ? QVariant() : found->value;
    }

    void insert(CPREventBase::ParameterType type, const QVariant &value)
    {
        if (m_map) {
            m_map->insert(CPREventBase::parameterKey(type), value);
            return;
        }
        const auto found = find(type);
        if (found == m_list.end())
            m_list.push_back({type, value});
        else
            m_list[static_cast<std::size_t>(found - m_list.begin())].value = value;
    }

    /// The map, made as a child of \a event when there is none yet.
    QQmlPropertyMap *map(CPREventBase *event)
    {
        if (!m_map) {
            auto *map = new QQmlPropertyMap(event);
            for (const Entry &entry : m_list)
                map->insert(CPREventBase::parameterKey(entry.type), entry.value);
            m_map = map;
            m_list = {};
        }
        return m_map;
    }

    /// Calls \a visit with key text and value of each, keys of the host's own among them. It may
    /// ask for the map.
    template <typename Visit> void visit(Visit visit) const
    {
        if (m_map) {
            const QStringList keys = m_map->keys();
            for (const QString &key : keys)
                visit(key, m_map->value(key));
        } else {
            const std::vector<Entry> list = m_list;
            for (const Entry &entry : list)
                visit(CPREventBase::parameterKey(entry.type), entry.value);
        }
    }

private:
    struct Entry {
        CPREventBase::ParameterType type;
        QVariant value;
    };

    std::vector<Entry>::const_iterator find(CPREventBase::ParameterType type) const
    {
        return std::find_if(m_list.begin(), m_list.end(),
                            [type](const Entry &entry) { return entry.type == type; });
    }

    std::vector<Entry> m_list; // empty once there is a map
    QQmlPropertyMap *m_map = nullptr; // child of the event
};

#endif
