"""Prints the bill of materials of a release, in CycloneDX: sbom.py POM JAR BUILD-FOLDER

What is in the DLL and the cleaner beside the project's own code is read from the linker's maps: the files of
the C++ runtime, and the Debian packages that they come from. SOURCE_DATE_EPOCH is the bill's time.
"""

import datetime
import functools
import hashlib
import importlib.metadata
import os
import pathlib
import platform
import re
import subprocess
import sys
import uuid
import xml.etree.ElementTree

from cyclonedx.model import HashAlgorithm, HashType
from cyclonedx.model.bom import Bom
from cyclonedx.model.component import Component, ComponentType
from cyclonedx.model.contact import OrganizationalContact, OrganizationalEntity
from cyclonedx.model.license import DisjunctiveLicense, LicenseExpression
from cyclonedx.output.json import JsonV1Dot6
from packageurl import PackageURL

pom = xml.etree.ElementTree.parse(sys.argv[1])
jar, build = pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])

# The licences of what is linked, by the beginning of the package's name. One that is not here must be looked
# at first: the script fails.
LICENCES = {
    "g++-mingw-w64": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "gcc-mingw-w64": "GPL-3.0-or-later WITH GCC-exception-3.1",
    "mingw-w64": "ZPL-2.1",
}


def said(path):
    """What the POM says, on one line."""
    element = pom.find("/".join("{*}" + name for name in path.split("/")))
    return " ".join(element.text.split())


def sha256(path):
    return HashType(alg=HashAlgorithm.SHA_256, content=hashlib.sha256(path.read_bytes()).hexdigest())


@functools.cache
def package_of(path):
    """The Debian package of an installed file, and its version."""
    owner = subprocess.check_output(["dpkg-query", "-S", path], text=True).partition(":")[0]
    return owner, subprocess.check_output(["dpkg-query", "-W", "-f", "${Version}", owner], text=True)


def linked(program):
    """What the linker took that is not the project's: archives, and the objects that begin and end a program."""
    text = program.with_suffix(".map").read_text()
    found = re.findall(r"^(/.*\.a)\(.*\)$", text, re.MULTILINE) + re.findall(r"^LOAD (/.*\.o)$", text, re.MULTILINE)
    return {os.path.realpath(path) for path in found}


def program(file, kind):
    return Component(type=kind, name=file, supplier=project, version=said("version"), hashes=[sha256(build / file)], bom_ref=file)


def package(name, version, files):
    system = platform.freedesktop_os_release()
    release = {"distro": f"{system['ID']}-{system.get('VERSION_ID', '')}"}
    return Component(
        type=ComponentType.LIBRARY,
        name=name,
        version=version,
        description=f"Linked into the programs: {', '.join(sorted(files))}",
        licenses=[LicenseExpression(next(LICENCES[start] for start in LICENCES if name.startswith(start)))],
        supplier=OrganizationalEntity(name="Debian"),
        purl=PackageURL("deb", system["ID"], name, version, release),
        bom_ref=name,
    )


project = OrganizationalEntity(name=said("developers/developer/organization"))
programs = [
    program("corvane_win32.dll", ComponentType.LIBRARY),
    program("corvane_cleaner.exe", ComponentType.APPLICATION),
]
files = {}
for part in programs:
    for path in linked(build / part.name):
        files.setdefault(package_of(path), set()).add(os.path.basename(path))
packages = {owner: package(*owner, names) for owner, names in files.items()}
jar_sum = sha256(jar)
library = Component(
    type=ComponentType.LIBRARY,
    group=said("groupId"),
    name=said("artifactId"),
    version=said("version"),
    description=said("description"),
    licenses=[DisjunctiveLicense(name=said("licenses/license/name"))],
    hashes=[jar_sum],
    supplier=project,
    purl=PackageURL("maven", said("groupId"), said("artifactId"), said("version"), {"type": "jar"}),
    bom_ref="jar",
)
tool = "cyclonedx-python-lib"
bom = Bom()
bom.metadata.component = library
bom.metadata.supplier = project
bom.metadata.authors.add(OrganizationalContact(name=said("developers/developer/name")))
bom.metadata.timestamp = datetime.datetime.fromtimestamp(int(os.environ["SOURCE_DATE_EPOCH"]), datetime.timezone.utc)
bom.metadata.tools.components.add(
    Component(type=ComponentType.LIBRARY, name=tool, version=importlib.metadata.version(tool), bom_ref=tool)
)
# The same jar has the same number.
bom.serial_number = uuid.uuid5(uuid.NAMESPACE_URL, f"{library.purl}#{jar_sum.content}")
bom.components.update(programs, packages.values())
bom.register_dependency(library, programs)
for part in programs:
    bom.register_dependency(part, {packages[package_of(path)] for path in linked(build / part.name)})
print(JsonV1Dot6(bom).output_as_string(indent=2))
