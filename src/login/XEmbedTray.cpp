// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "login/XEmbedTray.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

template <typename Reply> using ReplyPointer = std::unique_ptr<Reply, decltype(&std::free)>;

} // namespace

bool XEmbedTray::connect()
{
    if (m_connection != nullptr && xcb_connection_has_error(m_connection.get()) == 0 && m_selection != XCB_ATOM_NONE) {
        return true;
    }
    int screen = 0;
    // Never null: on failure the object holds the error and must be released too.
    m_connection.reset(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(m_connection.get()) != 0) {
        return false;
    }
    const std::string name = "_NET_SYSTEM_TRAY_S" + std::to_string(screen);
    const auto cookie = xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr),
                                                      &std::free);
    if (reply == nullptr) {
        return false;
    }
    m_selection = reply->atom;
    return true;
}

bool XEmbedTray::isThere()
{
    if (!connect()) {
        return false;
    }
    const auto cookie = xcb_get_selection_owner(m_connection.get(), m_selection);
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.get(), cookie, nullptr), &std::free);
    return reply != nullptr && reply->owner != XCB_WINDOW_NONE;
}
