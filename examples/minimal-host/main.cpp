// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// The smallest host: a session, one compression from the manikin, an archive.

#include <CPRData.h>
#include <CPRFileHandlerZip.h>
#include <chestboard/RMessage.h>

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    CPRData session;
    QObject::connect(session.cprEvents(), &CPREvents::compressionEvent,
                     [&out](const CPREventCompression *compression) {
                         out << compression->msecs() << " ms: " << compression->compDepth()
                             << " mm, number " << compression->numberInCycle() << " of its cycle\n";
                     });

    session.setCprState(CPRData::CPR_MANIKIN_INIT); // a manikin is there
    session.setCprState(CPRData::CPR_INIT); // a session is being prepared
    session.setCprState(CPRData::CPR_START); // and runs
    for (int period = 1; period <= 100; ++period) { // two seconds of the wave, 20 ms a period
        session.waveHeaderReceived(period);
        session.waveDataReceived(bls_2010::CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 0, period);
    }

    // Begun 500 ms ago, 5200 hundredths of a mm deep, 200 ms to the peak and 220 ms back.
    const QByteArray content = QByteArray::fromHex("00f401ffffffff0050140000c800dc000000");
    bls_2010::RMessage message(79, content, bls_2010::HeaderElement(100));
    if (!session.incomingMsg(&message))
        return 1;
    session.setCprState(CPRData::CPR_ENDED);

    CPRFileHandlerZip archive;
    const bool stored = archive.open(QStringLiteral("minimal.zip"), CPRFileHandlerZip::Create)
        && session.writeData(&archive) && archive.close();
    out << (stored ? "minimal.zip is written\n" : "minimal.zip cannot be written\n");
    return stored ? 0 : 1;
}
