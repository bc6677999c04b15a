# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""An Icinga whose only host is this desktop."""
import grp
import json
import os
import pwd

from rig.engines import Service

_CONFIGURATION = """\
const NodeName = "desktop"
const ZoneName = NodeName
include <itl>
object Endpoint NodeName {{}}
object Zone ZoneName {{ endpoints = [ NodeName ] }}
object Host "desktop" {{
  check_command = "dummy"
  vars.tolmar_q727 = true
{variables}
}}
include "{folder}/definition.conf"
object CheckerComponent "checker" {{}}
object PerfdataWriter "writer" {{
  rotation_interval = 1s
  service_perfdata_path = "{folder}/services"
  service_temp_path = "{folder}/services.new"
  host_temp_path = "{folder}/hosts.new"
  service_format_template = "$service.state$\\t$service.output$\\t$service.perfdata$"
}}
"""
_FOLDERS = {"DataDir": "lib", "LogDir": "log", "CacheDir": "cache", "SpoolDir": "spool", "InitRunDir": "run",
            "ConfigDir": "etc"}


class Icinga:
    """`definition` is the shipped file, and `tool` the program that it runs. `variables` are those of the host."""

    def __init__(self, folder, engines, definition, tool, variables):
        self._folder = folder
        # Icinga spreads the first checks over the interval.
        text = definition.read_text(encoding="utf-8").replace("check_interval = 1m", "check_interval = 1s")
        text = text.replace('"/usr/bin/tolmar-q727-status"', json.dumps(tool))
        (folder / "definition.conf").write_text(text, encoding="utf-8")
        lines = [f"  vars.{name} = {json.dumps(value, ensure_ascii=False)}" for name, value in variables.items()]
        (folder / "icinga2.conf").write_text(_CONFIGURATION.format(folder=folder, variables="\n".join(lines)),
                                             encoding="utf-8")
        command = [str(engines.libraries / "icinga2/sbin/icinga2"), "daemon", "-c", str(folder / "icinga2.conf"),
                   "-I", engines.path("usr/share/icinga2/include"),
                   "-D", f"RunAsUser={pwd.getpwuid(os.getuid()).pw_name}",
                   "-D", f"RunAsGroup={grp.getgrgid(os.getgid()).gr_name}"]
        for name, path in _FOLDERS.items():
            (folder / path).mkdir()
            command += ["-D", f"{name}={folder / path}"]
        self.service = Service(command, folder / "icinga.log",
                               env={**os.environ, "LD_LIBRARY_PATH": str(engines.libraries)})

    def results(self):
        """(state, output, performance data) of each check so far."""
        if self.service.process.poll() is not None:
            raise ChildProcessError(f"Icinga ended: {self.service.log.read_text(encoding='utf-8')}")
        return [tuple(line.split("\t")) for file in sorted(self._folder.glob("services.*"))
                for line in file.read_text(encoding="utf-8").splitlines()]
