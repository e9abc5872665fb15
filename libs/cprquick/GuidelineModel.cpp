// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/GuidelineModel.h"

#include <private/PrintableText.h>
#include <private/Units.h>

#include <QCoreApplication>
#include <QLocale>

namespace cprquick {

namespace {

// clang-format off

enum class Unit { None, Depth, Rate, Volume, Secs, Msecs, Percent };

/// A value of CPRGuidelines, or two that belong together, by the names of its properties.
struct ValueRow {
    const char *text;
    const char *min; ///< or the only one
    const char *max;  ///< null for one value
    Unit unit;
};

constexpr ValueRow rows[] = {
    {QT_TRANSLATE_NOOP("cprquick", "Guideline set"),                       "GuidelinesID",                                      nullptr,                                 Unit::None},
    {QT_TRANSLATE_NOOP("cprquick", "Compression depth"),                   "CompressionDepthMin",                               "CompressionDepthMax",                   Unit::Depth},
    {QT_TRANSLATE_NOOP("cprquick", "Depth after release, at most"),                 "CompressionAcceptableReleaseDepth",                 nullptr,                                 Unit::Depth},
    {QT_TRANSLATE_NOOP("cprquick", "Compression rate"),                    "CompressionRateMin",                                "CompressionRateMax",                    Unit::Rate},
    {QT_TRANSLATE_NOOP("cprquick", "Compressions in a cycle"),             "CompressionsBetweenVentilations",                   nullptr,                                 Unit::None},
    {QT_TRANSLATE_NOOP("cprquick", "Compressions in a cycle, two rescuers"), "CompressionsBetweenVentilationsTwoRescuer",       nullptr,                                 Unit::None},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilations in a cycle"),             "VentilationsBetweenCompressions",                   nullptr,                                 Unit::None},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilation volume"),                  "VentilationVolumeMin",                              "VentilationVolumeMax",                  Unit::Volume},
    {QT_TRANSLATE_NOOP("cprquick", "Inflation time"),                      "VentilationInflationTimeMin",                       "VentilationInflationTimeMax",           Unit::Msecs},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilation rate"),                    "VentilationRateMinDuringCPR",                       "VentilationRateMaxDuringCPR",           Unit::Rate},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilation rate, two rescuers"),      "VentilationRateMinDuringTwoRescuerCPR",             "VentilationRateMaxDuringTwoRescuerCPR", Unit::Rate},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilation rate, ventilations only"), "VentilationRateMinForVentilationsOnly",             "VentilationRateMaxForVentilationsOnly", Unit::Rate},
    {QT_TRANSLATE_NOOP("cprquick", "Flow time at least, one rescuer"),              "MinimumAcceptedFlowtimePercentageSingleRescuerCPR", nullptr,                                 Unit::Percent},
    {QT_TRANSLATE_NOOP("cprquick", "Flow time at least, two rescuers"),             "MinimumAcceptedFlowtimePercentageTwoRescuerCPR",    nullptr,                                 Unit::Percent},
    {QT_TRANSLATE_NOOP("cprquick", "Flow time at least, compressions only"),        "MinimumAcceptedFlowtimePercentageCompressionsOnly", nullptr,                                 Unit::Percent},
    {QT_TRANSLATE_NOOP("cprquick", "A pause in CPR begins after"),               "CompressionInactivityLevel0TimeoutCPR",             nullptr,                                 Unit::Secs},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilations before the first compression"), "PreVentilationsMin",                          "PreVentilationsMax",                    Unit::None},
};

// clang-format on

QString withUnit(const QString &value, Unit unit)
{
    switch (unit) {
    case Unit::None:
        return value;
    case Unit::Depth:
        return QCoreApplication::translate("cprquick", "%1 mm").arg(value);
    case Unit::Rate:
        return QCoreApplication::translate("cprquick", "%1 per min").arg(value);
    case Unit::Volume:
        return QCoreApplication::translate("cprquick", "%1 ml").arg(value);
    case Unit::Secs:
    case Unit::Msecs:
        return QCoreApplication::translate("cprquick", "%1 s").arg(value);
    case Unit::Percent:
        return QCoreApplication::translate("cprquick", "%1 %").arg(value);
    }
    return value;
}

/// Empty for a value that asks for nothing.
QString numberText(const QVariant &value, Unit unit)
{
    if (value.userType() == QMetaType::QString)
        return PrintableText::shown(value.toString());
    const int number = value.toInt();
    if (number <= 0)
        return QString();
    if (unit == Unit::Depth && number % Units::hmmPerMm != 0)
        return QLocale().toString(Units::mmOf(number), 'f', 1);
    if (unit == Unit::Msecs)
        return QLocale().toString(double(number) / Units::msecsPerSecond, 'f', 1);
    return QLocale().toString(unit == Unit::Depth ? number / Units::hmmPerMm : number);
}

QString valueTextOf(const CPRGuidelines &guidelines, const ValueRow &row)
{
    const QString min = numberText(guidelines.property(row.min), row.unit);
    const QString max = row.max ? numberText(guidelines.property(row.max), row.unit) : min;
    if (max.isEmpty())
        return QString();
    return withUnit(min == max || min.isEmpty() ? max : QStringLiteral("%1\u2013%2").arg(min, max),
                    row.unit);
}

} // namespace

GuidelineModel::GuidelineModel(QObject *parent) : QAbstractListModel(parent)
{
    connect(&m_watcher, &SessionWatcher::guidelinesChanged, this, &GuidelineModel::refresh);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        refresh();
        Q_EMIT sessionChanged();
    });
}

GuidelineModel::~GuidelineModel() = default;

void GuidelineModel::refresh()
{
    QVector<Row> now;
    const CPRGuidelines *guidelines = session() ? session()->cprGuidelines() : nullptr;
    for (const ValueRow &row : rows) {
        const QString text = guidelines ? valueTextOf(*guidelines, row) : QString();
        if (!text.isEmpty())
            now.append({QCoreApplication::translate("cprquick", row.text), text});
    }
    if (now == m_rows)
        return;
    beginResetModel();
    m_rows = now;
    endResetModel();
}

int GuidelineModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant GuidelineModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Row &row = m_rows.at(index.row());
    if (role == NameRole || role == Qt::DisplayRole)
        return row.name;
    return role == ValueTextRole ? QVariant(row.valueText) : QVariant();
}

QHash<int, QByteArray> GuidelineModel::roleNames() const
{
    return {{NameRole, "name"}, {ValueTextRole, "valueText"}};
}

} // namespace cprquick
