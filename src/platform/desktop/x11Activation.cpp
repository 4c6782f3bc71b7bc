#include "platform/desktop/x11Activation.h"

#include <QByteArray>
#include <QGuiApplication>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <xcb/xcb.h>

namespace folvane {

namespace {

struct FreeReply {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t atom(xcb_connection_t* connection, const char* name)
{
    const auto cookie = xcb_intern_atom(connection, 0, uint16_t(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_window_t rootWindow(xcb_connection_t* connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_client_message_event_t message(xcb_window_t window, xcb_atom_t type, uint8_t format)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = format;
    event.window = window;
    event.type = type;
    return event;
}

void sendToRoot(xcb_connection_t* connection, const xcb_client_message_event_t& event, uint32_t mask)
{
    xcb_send_event(connection, 0, rootWindow(connection), mask, reinterpret_cast<const char*>(&event));
}

// Extended Window Manager Hints, _NET_ACTIVE_WINDOW. Qt would send the time of our own last event, which is older than
// the click in the other program, and the window manager would keep the window behind.
void activate(xcb_connection_t* connection, xcb_window_t window, uint32_t time)
{
    constexpr uint32_t fromApplication = 1;
    xcb_client_message_event_t event = message(window, atom(connection, "_NET_ACTIVE_WINDOW"), 32);
    event.data.data32[0] = fromApplication;
    event.data.data32[1] = time;
    sendToRoot(connection, event, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

QByteArray quoted(const QString& startupId)
{
    QByteArray id = startupId.toUtf8();
    id.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + id + '"';
}

// The text goes out in pieces of 20 bytes, the last of which holds its final zero. They have to come from a window of
// our own, by which receivers put them together.
void endStartup(xcb_connection_t* connection, xcb_window_t window, const QString& startupId)
{
    const QByteArray text = "remove: ID=" + quoted(startupId);
    xcb_client_message_event_t event = message(window, atom(connection, "_NET_STARTUP_INFO_BEGIN"), 8);
    const xcb_atom_t more = atom(connection, "_NET_STARTUP_INFO");
    const qsizetype length = text.size() + 1;
    for (qsizetype from = 0; from < length; from += qsizetype(sizeof event.data.data8)) {
        std::memset(event.data.data8, 0, sizeof event.data.data8);
        std::memcpy(event.data.data8, text.constData() + from,
                    size_t(std::min(length - from, qsizetype(sizeof event.data.data8))));
        sendToRoot(connection, event, XCB_EVENT_MASK_PROPERTY_CHANGE);
        event.type = more;
    }
}

} // namespace

std::optional<quint32> timeOfStartup(const QString& startupId)
{
    const QString mark = QStringLiteral("_TIME");
    const qsizetype at = startupId.lastIndexOf(mark);
    bool isNumber = false;
    const quint32 time = startupId.mid(at + mark.size()).toUInt(&isNumber);
    return at >= 0 && isNumber ? std::optional(time) : std::nullopt;
}

void activateOnX11(WId window, const QString& startupId)
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    if (!connection || startupId.isEmpty())
        return;
    if (const std::optional<quint32> time = timeOfStartup(startupId))
        activate(connection, xcb_window_t(window), *time);
    endStartup(connection, xcb_window_t(window), startupId);
    xcb_flush(connection);
}

} // namespace folvane
