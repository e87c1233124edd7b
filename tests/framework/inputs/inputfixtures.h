#ifndef INPUTFIXTURES_H
#define INPUTFIXTURES_H

#include "byteinput.h"
#include "inputkind.h"

#include <QElapsedTimer>

#include <atomic>
#include <memory>
#include <thread>

const int Patience = 10000;

inline std::unique_ptr<ByteInput> inputFor(const QString& name)
{
    InputAddress address;
    QString error;
    if (!InputAddress::parse(name, &address, &error))
        qWarning("%s", qPrintable(error));
    return std::unique_ptr<ByteInput>(ByteInput::create(address));
}

/** The bytes up to the end, and behind them how it ended. */
inline QByteArray readAll(ByteInput* input)
{
    QByteArray all;
    QByteArray piece;
    ByteInput::Status status = ByteInput::Data;
    while ((status = input->read(&piece, Patience)) == ByteInput::Data && piece.size() <= 64 * 1024)
        all += piece;
    return all + (status == ByteInput::Data      ? QByteArray("<a piece is too large>")
                  : status == ByteInput::Nothing ? QByteArray("<nothing>")
                  : status == ByteInput::End     ? QByteArray("<end>")
                                                 : "<failed: " + input->getErrorString().toUtf8() + ">");
}

inline QByteArray openAndReadAll(const QString& name)
{
    const auto input = inputFor(name);
    return input->open() ? readAll(input.get()) : "<not opened: " + input->getErrorString().toUtf8() + ">";
}

/** Whether @p wait, which waits for the input, ends soon when another thread cancels that. */
template <typename Wait>
bool isCancelled(ByteInput* input, Wait wait)
{
    QElapsedTimer timer;
    timer.start();
    std::thread canceller([&] { input->cancel(); });
    wait();
    canceller.join();
    return timer.elapsed() < 5000;
}

#endif
