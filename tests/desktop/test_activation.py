# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The calls that a panel may send to a StatusNotifierItem. Each one returns when it is done."""

import pytest
from rig.accessibility import SHOWING


@pytest.mark.parametrize("method, shows", [("SecondaryActivate", False), ("ContextMenu", False), ("Activate", True)])
def test_activation(hidden_assistant, method, shows):
    hidden_assistant.icon.send(method)
    assert hidden_assistant.says(SHOWING) == shows
