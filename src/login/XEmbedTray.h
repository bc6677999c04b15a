// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <xcb/xcb.h>

/// Looks for a tray of the older kind on the X display that the environment names. By freedesktop.org's system tray
/// protocol such a tray owns the selection _NET_SYSTEM_TRAY_S<screen number>.
class XEmbedTray
{
public:
    /// Returns whether there is a tray now. Connects on the first call, and again after the connection was lost.
    bool isThere();

private:
    bool connect();

    struct Disconnect
    {
        void operator()(xcb_connection_t* connection) const
        {
            xcb_disconnect(connection);
        }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
};
