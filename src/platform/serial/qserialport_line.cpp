// Opening, writing and reading the serial line.
#include "platform/serial/qserialport_line.h"

#include "core/path_text.h"
#include "core/run_time_error.h"

#include <sys/stat.h>
#include <utility>

namespace {

// Milliseconds that a message may take.
constexpr int kLongestWrite = 99;
// Milliseconds until a line that accepted nothing is tried again; a jukebox with 30 LEDs writes 300 times a
// second.
constexpr int kStallRest = 1000;
// The usual size of a receive buffer. Bytes beyond it that nobody reads are dropped.
constexpr qint64 kReceiveBuffer = 1024;
// The most bytes of one read, because a device may never stop sending.
constexpr qsizetype kMostInput = qsizetype{64} * 1024;

bool Exists(const QString& path) {
    struct stat status = {};
    return lstat(BytesOfPath(path).constData(), &status) == 0;
}

} // namespace

QSerialPortLine::QSerialPortLine(std::map<int, QString> devices, QString appFolder, Log log)
    : devices_(std::move(devices)), appFolder_(std::move(appFolder)), log_(std::move(log)) {
    port_.setReadBufferSize(kReceiveBuffer);
}

QString QSerialPortLine::DeviceOf(int number) const {
    const auto given = devices_.find(number);
    if (given != devices_.end()) {
        return given->second;
    }
    const QString inFolder = PathIn(appFolder_, QStringLiteral("COM%1").arg(number));
    return Exists(inFolder) ? inFolder : QStringLiteral("/dev/ttyS%1").arg(number - 1);
}

void QSerialPortLine::Open(const SerialSettings& settings) {
    if (port_.isOpen()) {
        throw RunTimeError(kPortAlreadyOpen,
                           QStringLiteral("COM%1 is open already").arg(settings.commPort.value()));
    }
    const int number = settings.commPort.value();
    if (number < 1) {
        throw RunTimeError(kInvalidPortNumber, QStringLiteral("there is no port COM%1").arg(number));
    }
    const QString device = DeviceOf(number);
    port_.setPortName(device);
    port_.setBaudRate(settings.baudRate);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    if (!port_.open(QIODevice::ReadWrite)) {
        throw RunTimeError(
            kInvalidPortNumber,
            QStringLiteral("COM%1, %2: %3").arg(QString::number(number), device, port_.errorString()));
    }
    stalled_ = false;
    Apply(settings);
}

void QSerialPortLine::Apply(const SerialSettings& settings) {
    const auto refused = [this](const char* signal) {
        log_(QStringLiteral(" : Port %1 : signal %2 refusé : %3")
                 .arg(port_.portName(), QString::fromLatin1(signal), port_.errorString()));
        port_.clearError();
    };
    if (!port_.setRequestToSend(settings.rtsEnable)) {
        refused("RTS");
    }
    if (!port_.setDataTerminalReady(settings.dtrEnable)) {
        refused("DTR");
    }
}

void QSerialPortLine::Close() {
    if (port_.isOpen()) {
        port_.close();
    }
}

void QSerialPortLine::DeviceGone() {
    const QString detail = QStringLiteral("%1: %2").arg(port_.portName(), port_.errorString());
    port_.close();
    throw RunTimeError(kPortNotOpen, detail);
}

void QSerialPortLine::Output(const QByteArray& bytes) {
    if (!port_.isOpen()) {
        throw RunTimeError(kPortNotOpen, QStringLiteral("the serial port is closed: nothing can be sent"));
    }
    if (stalled_ && !asleep_.hasExpired()) {
        return;
    }
    if (Send(bytes)) {
        stalled_ = false;
        return;
    }
    if (port_.error() != QSerialPort::NoError && port_.error() != QSerialPort::TimeoutError) {
        DeviceGone();
    }
    DropOutput();
}

// Returns false when the device did not accept everything in time, or failed.
bool QSerialPortLine::Send(const QByteArray& bytes) {
    const QDeadlineTimer deadline(kLongestWrite);
    port_.clearError();
    if (port_.write(bytes) != bytes.size()) {
        return false;
    }
    while (port_.bytesToWrite() > 0) {
        if (!port_.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) {
            return false;
        }
    }
    return true;
}

void QSerialPortLine::DropOutput() {
    port_.clear(QSerialPort::Output);
    port_.clearError();
    if (!stalled_) {
        log_(QStringLiteral(" : Port %1 : la ligne ne prend rien, message abandonné").arg(port_.portName()));
    }
    stalled_ = true;
    asleep_.setRemainingTime(kStallRest);
}

QByteArray QSerialPortLine::Input() {
    if (!port_.isOpen()) {
        throw RunTimeError(kPortNotOpen,
                           QStringLiteral("the serial port is closed: nothing can be received"));
    }
    QByteArray arrived = port_.readAll();
    while (arrived.size() < kMostInput && port_.waitForReadyRead(0)) {
        arrived += port_.readAll();
    }
    if (port_.error() == QSerialPort::TimeoutError) {
        port_.clearError();
    }
    return arrived;
}
