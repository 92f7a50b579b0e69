#!/usr/bin/env python3
"""Packs the system's time-zone database into one C++ source for programs whose system has none.

Usage: pack_zones.py ZONEINFO_FOLDER ZIC OUTPUT. ZIC compiles the folder's tzdata.zi without what
follows from each zone's last rule; zones that are alike are kept once.
"""
import os
import subprocess
import sys
import tempfile


def compiled_zones(zoneinfo, zic):
    zones = {}
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([zic, "-b", "slim", "-d", folder, os.path.join(zoneinfo, "tzdata.zi")],
                       check=True)
        for place, _, names in os.walk(folder):
            for name in names:
                path = os.path.join(place, name)
                with open(path, "rb") as file:
                    zones[os.path.relpath(path, folder).replace(os.sep, "/")] = file.read()
    return zones


def zones_of_countries(zoneinfo):
    rows = []
    with open(os.path.join(zoneinfo, "zone.tab"), encoding="utf-8") as table:
        for line in table:
            if not line.startswith("#"):
                columns = line.rstrip("\n").split("\t")
                rows.append((columns[0], columns[2]))
    return rows


def literal(data):
    return '"' + "".join("\\%03o" % byte for byte in data) + '"'


def main():
    zoneinfo, zic, output = sys.argv[1:]
    zones = compiled_zones(zoneinfo, zic)
    places, packed = {}, b""
    for data in zones.values():
        if data not in places:
            places[data] = len(packed)
            packed += data
    with open(output, "w", encoding="ascii") as out:
        out.write('#include "hosts/win32/builtin_zones.h"\n\nnamespace orvello {\n\n')
        out.write("const BuiltinZone kBuiltinZones[] = {\n")
        for name in sorted(zones):
            out.write('    {"%s", %d, %d},\n' % (name, places[zones[name]], len(zones[name])))
        out.write("};\nconst std::size_t kBuiltinZoneCount = %d;\n\n" % len(zones))
        out.write("const ZoneOfCountry kZonesOfCountries[] = {\n")
        rows = zones_of_countries(zoneinfo)
        for country, zone in rows:
            out.write('    {"%s", "%s"},\n' % (country, zone))
        out.write("};\nconst std::size_t kZoneOfCountryCount = %d;\n\n" % len(rows))
        out.write("const char kBuiltinZoneBytes[] =\n")
        for at in range(0, len(packed), 64):
            out.write("    " + literal(packed[at:at + 64]) + "\n")
        out.write("    ;\n\n}  // namespace orvello\n")


main()
