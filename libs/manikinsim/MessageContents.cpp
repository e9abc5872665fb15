// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/MessageContents.h"

#include "private/MessageLayouts.h"

#include <algorithm>

namespace manikinsim::contents {

namespace {

template <std::size_t N>
QByteArray parameters(const std::array<MessageLayouts::Parameter, N> &table,
                      const Parameters &values, unsigned int end)
{
    const auto valueOf = [&values](const auto &row) { return values.value(row.key); };
    return MessageLayouts::encode(table, valueOf, end);
}

template <std::size_t N>
QByteArray parameters(const std::array<MessageLayouts::Parameter, N> &table,
                      const Parameters &values)
{
    return parameters(table, values, MessageLayouts::endOf(table));
}

} // namespace

QByteArray versionInfo(const Device &device, bool isOld)
{
    MessageLayouts::VersionInfo v;
    v.firmwareFirst = device.firmware[0];
    v.firmwareSecond = device.firmware[1];
    v.firmwareThird = device.firmware[2];
    v.firmwareBuild = device.firmwareBuild;
    v.manikinType = device.type;
    v.rfidFirst = device.rfid[0];
    v.rfidSecond = device.rfid[1];
    v.rfidThird = device.rfid[2];
    v.feedpodFirst = device.feedpod[0];
    v.feedpodSecond = device.feedpod[1];
    v.connectedAed = device.connectedAed;
    const auto &table = MessageLayouts::versionInfo;
    return MessageLayouts::encodeFrom(
        v, table, isOld ? MessageLayouts::oldVersionEnd : MessageLayouts::endOf(table));
}

QByteArray lifetimeCompressions(quint32 count)
{
    return MessageLayouts::encode(
        {{MessageLayouts::lifetimeSelector, MessageLayouts::LifetimeCompressions},
         {MessageLayouts::lifetimeCount, count}});
}

QByteArray lifetimeVentilations(quint32 count)
{
    return MessageLayouts::encode(
        {{MessageLayouts::lifetimeSelector, MessageLayouts::LifetimeVentilations},
         {MessageLayouts::lifetimeCount, count}});
}

QByteArray lifetimeBattery(const Device &device)
{
    QByteArray content = MessageLayouts::encode(
        {{MessageLayouts::lifetimeSelector, MessageLayouts::LifetimeBattery}});
    for (std::size_t i = 0; i < device.battery.size(); ++i)
        MessageLayouts::put(content, MessageLayouts::lifetimeBattery[i], device.battery[i]);
    return content;
}

QByteArray guidelines(bls_2010::GuidelineValues_t values, bool isInUse)
{
    values.manikinGuidelineFlag = isInUse ? 1 : 0;
    return MessageLayouts::encodeFrom(values, MessageLayouts::guidelines,
                                      MessageLayouts::guidelineIdByte)
        + QByteArray::fromStdString(values.guidelinesID);
}

QByteArray waveInfo(quint8 waveType, int period, int waveDelay)
{
    return MessageLayouts::encode({{MessageLayouts::waveType, waveType},
                                   {MessageLayouts::waveSamplePeriod, period},
                                   {MessageLayouts::waveTime, waveDelay}});
}

QByteArray compression(const Compression &c, int age)
{
    return MessageLayouts::encode(MessageLayouts::compressionEvent,
                                  {age, c.peakForce, c.releaseForce, c.status, c.depth,
                                   c.releaseDepth, c.peak - c.start, c.end - c.peak, c.period});
}

QByteArray ventilation(const Ventilation &v, int age)
{
    return MessageLayouts::encode(
        MessageLayouts::ventilationEvent,
        {age, v.duringCompression ? 1 : 0, v.peak - v.start, v.end - v.peak, v.period, v.volume});
}

QByteArray protocol(Scenario::Protocol protocol)
{
    return MessageLayouts::encode(
        {{MessageLayouts::protocolOfList, protocol}, {MessageLayouts::protocolOfInfo, protocol}});
}

QByteArray rhythm(int rhythm)
{
    return MessageLayouts::encode(
        {{MessageLayouts::ecgRhythm, rhythm}, {MessageLayouts::secondEcgRhythm, rhythm}});
}

QByteArray userEvent(const QString &name)
{
    constexpr int length = MessageLayouts::userNameLength;
    return MessageLayouts::encode({{MessageLayouts::userEventFlag, 0}})
        + name.toUtf8().left(length).leftJustified(length, '\0');
}

QByteArray aedEvent(int kind, const std::vector<int> &details)
{
    QByteArray content = MessageLayouts::encode({{MessageLayouts::aedEventKind, kind}});
    auto next = details.begin();
    for (const MessageLayouts::AedDetail &detail : MessageLayouts::aedDetails) {
        if (detail.kind == kind && next != details.end())
            MessageLayouts::put(content, detail.field, *next++);
    }
    return content;
}

bool hasDetails(int kind)
{
    const auto &details = MessageLayouts::aedDetails;
    return std::any_of(details.begin(), details.end(),
                       [kind](const auto &detail) { return detail.kind == kind; });
}

Parameters fitted(const Parameters &values)
{
    Parameters result = values;
    const auto fitAll = [&result](const auto &table) {
        for (const MessageLayouts::Parameter &row : table) {
            const auto value = result.find(row.key);
            if (value != result.end())
                *value = static_cast<int>(MessageLayouts::fitted(row.width, *value));
        }
    };
    fitAll(MessageLayouts::independentStatistics);
    fitAll(MessageLayouts::dependentStatistics);
    fitAll(MessageLayouts::scores);
    return result;
}

QByteArray independentStatistics(const Parameters &values, bool isOld)
{
    const auto &table = MessageLayouts::independentStatistics;
    return parameters(table, values,
                      isOld ? MessageLayouts::oldStatisticsEnd : MessageLayouts::endOf(table));
}

QByteArray histograms(const Parameters &values)
{
    return parameters(MessageLayouts::histograms, values);
}

QByteArray dependentStatistics(const Parameters &values)
{
    return parameters(MessageLayouts::dependentStatistics, values);
}

QByteArray scores(const Parameters &values, bool isOld)
{
    const auto &table = MessageLayouts::scores;
    return parameters(table, values,
                      isOld ? MessageLayouts::oldScoresEnd : MessageLayouts::endOf(table));
}

} // namespace manikinsim::contents
