// Opening, writing and reading the serial line.
#include "platform/serial/qserialport_line.h"

#include "core/path_text.h"
#include "core/run_time_error.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int kPorts = 16;
// The size of the usual send buffer: a line with more than this still to send is behind.
constexpr qsizetype kSendBuffer = 512;
// Milliseconds that closing waits for the last messages.
constexpr int kLongestEnd = 1000;
// Milliseconds of a rest, and without a byte after which a reply is taken as complete.
constexpr int kLongestRest = 10;
constexpr int kQuiet = 2;
// The usual size of a receive buffer. Bytes that do not fit into it are dropped.
constexpr qint64 kReceiveBuffer = 1024;
// The most bytes of one read, because a device may never stop sending.
constexpr qsizetype kMostInput = qsizetype{64} * 1024;

OutputQueue::Time Now() {
    return std::chrono::steady_clock::now();
}

bool Exists(const QString& path) {
    struct stat status = {};
    return lstat(BytesOfPath(path).constData(), &status) == 0;
}

// Bytes that the driver has accepted and not sent; 0 where it does not say.
qsizetype WaitingInDriver(int descriptor) {
    int bytes = 0;
    return ioctl(descriptor, TIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

} // namespace

QSerialPortLine::QSerialPortLine(std::map<int, QString> devices, QString appFolder, Log log)
    : devices_(std::move(devices)), appFolder_(std::move(appFolder)), log_(std::move(log)) {
    port_.setReadBufferSize(kReceiveBuffer);
    // Queued, because the port must not be closed while it reports the error.
    QObject::connect(
        &port_, &QSerialPort::errorOccurred, &port_, [this] { CloseIfGone(); }, Qt::QueuedConnection);
}

// The toolkit continues to watch a device that has hung up, which takes a whole core. The next write reports
// it.
void QSerialPortLine::CloseIfGone() {
    if (!port_.isOpen()) {
        return;
    }
    pollfd line = {static_cast<int>(port_.handle()), 0, 0};
    if (poll(&line, 1, 0) > 0 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
        gone_ = QStringLiteral("the device has hung up");
        writable_.reset();
        queue_.Clear();
        port_.close();
    }
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
    const int number = settings.commPort.value();
    if (port_.isOpen()) {
        throw RunTimeError(kPortAlreadyOpen, QStringLiteral("COM%1 is open already").arg(number));
    }
    if (number < 1 || number > kPorts) {
        throw RunTimeError(kInvalidPortNumber,
                           QStringLiteral("there is no port COM%1, only 1 to %2").arg(number).arg(kPorts));
    }
    const QString device = DeviceOf(number);
    name_ = QStringLiteral("COM%1, %2").arg(QString::number(number), device);
    port_.setPortName(device);
    port_.setBaudRate(settings.baudRate);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    if (!port_.open(QIODevice::ReadWrite)) {
        RefuseToOpen(device);
    }
    queue_.Clear();
    gone_.clear();
    dropped_ = false;
    writable_ = std::make_unique<QSocketNotifier>(port_.handle(), QSocketNotifier::Write);
    writable_->setEnabled(false);
    QObject::connect(writable_.get(), &QSocketNotifier::activated, [this] { Send(); });
    Apply(settings);
}

// A device that we may use and cannot lock is in use by another process.
void QSerialPortLine::RefuseToOpen(const QString& name) {
    const bool held = port_.error() == QSerialPort::PermissionError &&
                      access(BytesOfPath(name).constData(), R_OK | W_OK) == 0;
    if (held) {
        throw RunTimeError(kPortAlreadyOpen, name_ + QStringLiteral(": in use by another program"));
    }
    throw RunTimeError(kInvalidPortNumber, name_ + QStringLiteral(": ") + port_.errorString());
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
    gone_.clear();
    if (!port_.isOpen()) {
        return;
    }
    SendRest();
    writable_.reset();
    queue_.Clear();
    port_.close();
}

// Waits for the last messages unless the line has stalled.
void QSerialPortLine::SendRest() {
    const QDeadlineTimer deadline(kLongestEnd);
    while (queue_.Size() > 0 && gone_.isEmpty() && !queue_.IsStalled(Now()) && !deadline.hasExpired()) {
        pollfd line = {static_cast<int>(port_.handle()), POLLOUT, 0};
        poll(&line, 1, static_cast<int>(deadline.remainingTime()));
        Send();
    }
    if (queue_.Size() > 0) {
        TellDropped();
    }
}

void QSerialPortLine::DeviceGone(const QString& reason) {
    queue_.Clear();
    Close();
    throw RunTimeError(kPortNotOpen, QStringLiteral("%1 has gone: %2").arg(name_, reason));
}

void QSerialPortLine::Output(const QByteArray& bytes) {
    if (port_.isOpen() && gone_.isEmpty()) {
        DropStalled();
        if (!queue_.Add(bytes, Now())) {
            TellDropped();
        }
        Send();
    }
    if (!gone_.isEmpty()) {
        DeviceGone(std::exchange(gone_, QString()));
    }
    if (!port_.isOpen()) {
        throw RunTimeError(kPortNotOpen, QStringLiteral("the serial port is closed: nothing can be sent"));
    }
}

// Sends what the device accepts now, and has the event loop send the rest.
void QSerialPortLine::Send() {
    const OutputQueue::Outcome outcome = queue_.Send(static_cast<int>(port_.handle()), Now());
    if (outcome == OutputQueue::Outcome::kFailed) {
        gone_ = QString::fromLocal8Bit(std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
    }
    const bool waits = outcome == OutputQueue::Outcome::kWaiting;
    if (writable_->isEnabled() != waits) {
        writable_->setEnabled(waits);
    }
    dropped_ = dropped_ && waits;
}

// Tries to send first: the event loop may have been busy for as long as a line may stall.
void QSerialPortLine::DropStalled() {
    if (queue_.Size() > 0) {
        Send();
    }
    if (queue_.DropStalled(Now())) {
        TellDropped();
    }
}

void QSerialPortLine::TellDropped() {
    if (!dropped_) {
        log_(QStringLiteral(" : Port %1 : la ligne ne prend rien, message abandonné").arg(port_.portName()));
    }
    dropped_ = true;
}

bool QSerialPortLine::IsBehind() {
    if (!port_.isOpen() || !gone_.isEmpty()) {
        return false;
    }
    DropStalled();
    return queue_.Size() + WaitingInDriver(static_cast<int>(port_.handle())) > kSendBuffer;
}

// A reply arrives byte by byte; resting until it is complete saves repeated commands.
void QSerialPortLine::AwaitInput() {
    const QDeadlineTimer deadline(kLongestRest);
    while (port_.isOpen() && port_.bytesAvailable() < kReceiveBuffer && !deadline.hasExpired()) {
        const int rest = static_cast<int>(deadline.remainingTime());
        const bool arrived =
            port_.waitForReadyRead(port_.bytesAvailable() > 0 ? std::min(rest, kQuiet) : rest);
        if (!arrived) {
            break;
        }
    }
    if (port_.error() == QSerialPort::TimeoutError) {
        port_.clearError();
    }
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
