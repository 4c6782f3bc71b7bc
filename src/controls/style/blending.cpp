#include "controls/style/blending.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace folvane {

namespace {

// A compositor owns this selection of its screen (Extended Window Manager Hints, "Compositing Managers").
bool compositorRuns(xcb_connection_t* connection)
{
    constexpr char name[] = "_NET_WM_CM_S0";
    using Atom = std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)>;
    using Owner = std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)>;
    const Atom atom(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, sizeof name - 1, name), nullptr),
        std::free);
    if (!atom)
        return false;
    const Owner owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr),
        std::free);
    return owner && owner->owner != XCB_NONE;
}

} // namespace

bool screenBlendsWindows()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return true;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 && compositorRuns(x11->connection());
}

} // namespace folvane
