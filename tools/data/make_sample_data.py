#!/usr/bin/env python3
"""Writes the three property lists of sample data into resources/.

Needs nothing but the Python standard library. The output depends only on the tables beside this
script, so running it twice changes nothing.
"""

import math
import plistlib
import re
from pathlib import Path

from sample_authors import AUTHORS
from sample_places import MAIN_PLACES, PLACES, USER_LOCATION
from sample_records import RECORDS

RESOURCES = Path(__file__).resolve().parents[2] / "resources"
METRES_PER_DEGREE = 111_195.0
SECONDS = {"m": 60, "h": 3600, "d": 86400}
RECORD_COUNT = 60
SOUND_COUNT = 24


def moved(anchor, east, north):
    """The coordinate (degrees) that lies so many metres east and north of an anchor (degrees)."""
    latitude, longitude = anchor
    metres_per_longitude = METRES_PER_DEGREE * math.cos(math.radians(latitude))
    return round(latitude + north / METRES_PER_DEGREE, 6), round(longitude + east / metres_per_longitude, 6)


def distance(first, second):
    """Metres between two coordinates in degrees, good to a few metres within a city."""
    mean_latitude = math.radians((first[0] + second[0]) / 2)
    north = (second[0] - first[0]) * METRES_PER_DEGREE
    east = (second[1] - first[1]) * METRES_PER_DEGREE * math.cos(mean_latitude)
    return math.hypot(east, north)


def seconds(age):
    """The seconds in an age such as '17m', '3h' or '2d'."""
    return int(age[:-1]) * SECONDS[age[-1]]


def author_entry(row):
    """One author as a property-list dictionary."""
    key, full_name, recordings, places, followers, biography = row
    entry = {"id": "author-" + key, "full_name": full_name}
    if biography is not None:
        entry["bio"] = biography
    entry["portrait_name"] = "portrait_" + key
    entry["recordings_count"] = recordings
    entry["places_count"] = places
    entry["followers_count"] = followers
    return entry


def record_entry(row):
    """One recording as a property-list dictionary."""
    sound, author, place, east, north, age = row
    latitude, longitude = moved(PLACES[place], east, north)
    return {
        "author_id": "author-" + author,
        "sound_name": sound,
        "seconds_ago": seconds(age),
        "latitude": latitude,
        "longitude": longitude,
        "location_name": place,
    }


def check(authors, records):
    """Stops with a message where the tables break a promise that the application relies on."""
    author_ids = {author["id"] for author in authors}
    used_authors = {record["author_id"] for record in records}
    coordinates = {(record["latitude"], record["longitude"]) for record in records}
    used_places = {record["location_name"] for record in records}
    assert len(records) == RECORD_COUNT, f"{len(records)} records"
    assert used_authors == author_ids, f"authors: {used_authors ^ author_ids}"
    assert len(coordinates) == len(records), "two records share a coordinate"
    assert set(MAIN_PLACES) <= used_places, f"unused: {set(MAIN_PLACES) - used_places}"
    assert len({record["sound_name"] for record in records}) == SOUND_COUNT, "sounds not all used"


def write(name, contents):
    """Writes one XML property list, keys in the order given."""
    path = RESOURCES / (name + ".plist")
    text = plistlib.dumps(contents, fmt=plistlib.FMT_XML, sort_keys=False).decode()
    # The library writes a document type line with a foreign address; the list is as good without it.
    path.write_text(re.sub(r"<!DOCTYPE[^>]*>\n", "", text), encoding="utf-8")


def main():
    """Builds, checks and writes the sample data; prints the spread of distances."""
    authors = [author_entry(row) for row in AUTHORS]
    records = [record_entry(row) for row in RECORDS]
    check(authors, records)
    write("FakeUserLocation", USER_LOCATION)
    write("FakePeople", authors)
    write("FakeRecords", records)
    user = (USER_LOCATION["latitude"], USER_LOCATION["longitude"])
    distances = sorted(distance(user, (record["latitude"], record["longitude"])) for record in records)
    print(f"{len(authors)} authors, {len(records)} records, "
          f"{distances[0]:.0f} to {distances[-1]:.0f} m from the user, median {distances[len(distances) // 2]:.0f} m")


if __name__ == "__main__":
    main()
