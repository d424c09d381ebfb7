#include "windows/reports/PrintServer.h"

#include <QString>
#include <QtEndian>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace pontrel::test {

namespace {

// The printing protocol: operations, status codes, and the tags of attributes.
enum Operation {
    PrintJob = 0x0002,
    CreateJob = 0x0005,
    SendDocument = 0x0006,
    CancelJob = 0x0008,
    GetAttributes = 0x000b,
    GetDefault = 0x4001,
    GetPrinters = 0x4002,
};
enum Status {
    Good = 0x0000,
    NotFound = 0x0406,
    BadFormat = 0x040a,
    NotSupported = 0x0501,
    NotAccepting = 0x0506,
};
enum Tag : char {
    OperationGroup = 0x01,
    JobGroup = 0x02,
    End = 0x03,
    PrinterGroup = 0x04,
    Integer = 0x21,
    Boolean = 0x22,
    Enumeration = 0x23,
    Name = 0x42,
    Uri = 0x45,
    Charset = 0x47,
    Language = 0x48,
};

constexpr int HeaderSize = 8; // version, operation or status, number of the request
constexpr int PollMs = 20;

QByteArray bigEndian(quint32 number, int bytes) {
    const quint32 swapped = qToBigEndian(number);
    return QByteArray(reinterpret_cast<const char*>(&swapped), 4).right(bytes);
}

QByteArray attribute(Tag tag, const QByteArray& name, const QByteArray& value) {
    return QByteArray(1, tag) + bigEndian(static_cast<quint32>(name.size()), 2) + name +
           bigEndian(static_cast<quint32>(value.size()), 2) + value;
}

QByteArray attribute(Tag tag, const QByteArray& name, quint32 value) {
    return attribute(tag, name, bigEndian(value, 4));
}

quint32 numberAt(const QByteArray& bytes, qsizetype place, int size) {
    quint32 number = 0;
    for (qsizetype at = place; at < place + size && at < bytes.size(); ++at)
        number = number << 8 | static_cast<uchar>(bytes[at]);
    return number;
}

/// What a request asks for: the number of copies, and the place behind its attributes.
struct Attributes {
    int copies = 1;
    qsizetype end = 0;
};

Attributes attributesOf(const QByteArray& request) {
    Attributes result;
    qsizetype at = HeaderSize;
    while (at < request.size() && request[at] != End) {
        if (request[at] < 0x10) { // begins a group
            ++at;
            continue;
        }
        const auto nameSize = static_cast<qsizetype>(numberAt(request, at + 1, 2));
        const QByteArray name = request.mid(at + 3, nameSize);
        const auto valueSize = static_cast<qsizetype>(numberAt(request, at + 3 + nameSize, 2));
        if (name == "copies")
            result.copies = static_cast<int>(numberAt(request, at + 5 + nameSize, 4));
        at += 5 + nameSize + valueSize;
    }
    result.end = at + 1;
    return result;
}

/// Takes what comes next from a connection; false at its end, or where nobody waits for it any more.
bool readMore(int connection, QByteArray& bytes, const std::atomic<bool>& isStopped) {
    pollfd waited{connection, POLLIN, 0};
    while (!isStopped) {
        if (::poll(&waited, 1, PollMs) <= 0)
            continue;
        char buffer[65536];
        const ssize_t size = ::recv(connection, buffer, sizeof buffer, 0);
        if (size > 0)
            bytes.append(buffer, size);
        return size > 0;
    }
    return false;
}

/// The first line of those that come, taken out of them.
QByteArray takeLine(QByteArray& bytes) {
    const qsizetype end = bytes.indexOf("\r\n");
    const QByteArray line = bytes.left(end);
    bytes.remove(0, end + 2);
    return line;
}

void send(int connection, const QByteArray& bytes) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t size = ::send(connection, bytes.constData() + sent,
                                    static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (size <= 0)
            return;
        sent += size;
    }
}

} // namespace

PrintServer::PrintServer() {
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listener_, 8) != 0 ||
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        qFatal("no print server can be had");
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

PrintServer::~PrintServer() {
    stop();
}

void PrintServer::stop() {
    isStopped_ = true;
    if (thread_.joinable())
        thread_.join();
    if (listener_ >= 0)
        ::close(listener_);
    listener_ = -1;
}

QByteArray PrintServer::address() const {
    return "127.0.0.1:" + QByteArray::number(port_);
}

QList<PrintServer::Job> PrintServer::jobs() const {
    const std::lock_guard lock(mutex_);
    return jobs_;
}

void PrintServer::serve() {
    QList<std::thread*> talks;
    pollfd waited{listener_, POLLIN, 0};
    while (!isStopped_) {
        if (::poll(&waited, 1, PollMs) <= 0)
            continue;
        const int connection = ::accept(listener_, nullptr, nullptr);
        if (connection >= 0)
            talks << new std::thread([this, connection] { talk(connection); });
    }
    for (std::thread* talk : talks) {
        talk->join();
        delete talk;
    }
}

void PrintServer::talk(int connection) {
    QByteArray bytes;
    const auto await = [&](auto isThere) {
        while (!isThere())
            if (!readMore(connection, bytes, isStopped_))
                return false;
        return true;
    };
    while (await([&] { return bytes.contains("\r\n\r\n"); })) {
        qsizetype length = 0;
        bool chunked = false;
        for (QByteArray line = takeLine(bytes).toLower(); !line.isEmpty(); line = takeLine(bytes).toLower()) {
            if (line.startsWith("content-length:"))
                length = line.mid(15).trimmed().toLongLong();
            chunked = chunked || line == "transfer-encoding: chunked";
            if (line == "expect: 100-continue")
                send(connection, "HTTP/1.1 100 Continue\r\n\r\n");
        }
        QByteArray request;
        do {
            if (chunked) {
                if (!await([&] { return bytes.contains("\r\n"); }))
                    break;
                length = takeLine(bytes).toLongLong(nullptr, 16);
            }
            const qsizetype whole = chunked ? length + 2 : length;
            if (!await([&] { return bytes.size() >= whole; }))
                break;
            request += bytes.left(length);
            bytes.remove(0, whole);
        } while (chunked && length > 0);
        const QByteArray body = answer(request);
        send(connection, "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
                             QByteArray::number(body.size()) + "\r\n\r\n" + body);
    }
    ::close(connection);
}

QByteArray PrintServer::answer(const QByteArray& request) {
    const auto operation = static_cast<int>(numberAt(request, 2, 2));
    const QByteArray uri = "ipp://" + address() + "/printers/Office";
    const Refuses refuses = refuses_;
    const QByteArray queue = QByteArray(1, PrinterGroup) + attribute(Name, "printer-name", "Office") +
                             attribute(Uri, "printer-uri-supported", uri) +
                             attribute(Enumeration, "printer-state", 3) + // idle
                             attribute(Boolean, "printer-is-accepting-jobs",
                                       QByteArray(1, refuses == Refuses::Jobs ? '\0' : '\1')) +
                             attribute(Integer, "printer-type", 0);
    const QByteArray job = QByteArray(1, JobGroup) + attribute(Integer, "job-id", 1) +
                           attribute(Uri, "job-uri", "ipp://" + address() + "/jobs/1") +
                           attribute(Enumeration, "job-state", 3); // waits
    Status status = hasQueue_ ? Good : NotFound;
    QByteArray told;
    const std::lock_guard lock(mutex_);
    switch (operation) {
    case GetPrinters:
    case GetDefault:
    case GetAttributes:
        told = queue;
        break;
    case PrintJob:
    case CreateJob:
    case SendDocument: {
        const Attributes attributes = attributesOf(request);
        told = job;
        if (status == Good && refuses == Refuses::Jobs)
            status = NotAccepting;
        if (status == Good && refuses == Refuses::Documents && operation != CreateJob)
            status = BadFormat;
        if (status == Good && operation != SendDocument)
            jobs_.append(Job{attributes.copies, {}});
        if (status == Good && operation != CreateJob)
            jobs_.last().document = request.mid(attributes.end);
        break;
    }
    case CancelJob:
        if (status == Good && !jobs_.isEmpty())
            jobs_.removeLast();
        break;
    default:
        status = NotSupported;
    }
    return QByteArray("\x02\x00", 2) + bigEndian(status, 2) + request.mid(4, 4) +
           QByteArray(1, OperationGroup) + attribute(Charset, "attributes-charset", "utf-8") +
           attribute(Language, "attributes-natural-language", "en") + (status == Good ? told : QByteArray()) +
           QByteArray(1, End);
}

} // namespace pontrel::test
