"""Where the sample recordings were made: anchors as (latitude, longitude) in degrees."""

# The nine main places of the sample data.
MAIN_PLACES = {
    "Flinders Street Station": (-37.8183, 144.9671),
    "Exhibition Centre": (-37.8258, 144.9550),
    "Treasury Gardens": (-37.8141, 144.9762),
    "Royal Exhibition Building": (-37.8047, 144.9717),
    "Flagstaff Gardens": (-37.8105, 144.9545),
    "Etihad Stadium": (-37.8165, 144.9475),
    "Royal Botanic Gardens": (-37.8304, 144.9800),
    "Yarra Park": (-37.8188, 144.9855),
    "Rod Laver Arena": (-37.8216, 144.9785),
}

# Other public spots in and around the centre.
OTHER_PLACES = {
    "Flinders and Swanston Streets": (-37.81746, 144.96735),
    "Collins and Swanston Streets": (-37.81550, 144.96645),
    "Bourke Street Mall": (-37.81372, 144.96470),
    "Lonsdale and Russell Streets": (-37.81087, 144.96712),
    "La Trobe and Spencer Streets": (-37.81319, 144.95141),
    "Federation Square": (-37.8180, 144.9691),
    "Hosier Lane": (-37.8165, 144.9694),
    "Degraves Street": (-37.8170, 144.9658),
    "Block Arcade": (-37.8158, 144.9644),
    "Royal Arcade": (-37.8142, 144.9640),
    "St Paul's Cathedral": (-37.8170, 144.9677),
    "Melbourne Town Hall": (-37.8151, 144.9667),
    "Princes Bridge": (-37.8194, 144.9683),
    "Southbank Promenade": (-37.8207, 144.9655),
    "Birrarung Marr": (-37.8187, 144.9733),
    "Fitzroy Gardens": (-37.8127, 144.9803),
    "State Library Forecourt": (-37.8100, 144.9645),
    "Queen Victoria Market": (-37.8072, 144.9570),
    "Southern Cross Station": (-37.8184, 144.9525),
    "Carlton Gardens": (-37.8065, 144.9713),
    "Lygon Street": (-37.8002, 144.9670),
    "Brunswick Street": (-37.7985, 144.9783),
    "South Melbourne Market": (-37.8318, 144.9563),
    "Albert Park Lake": (-37.8440, 144.9700),
    "Abbotsford Convent": (-37.8024, 145.0045),
    "St Kilda Pier": (-37.8640, 144.9715),
    "Yarra Bend Park": (-37.7960, 145.0085),
}

PLACES = {**MAIN_PLACES, **OTHER_PLACES}

# The simulated user stands on the north-west corner of Flinders and Swanston Streets.
USER_LOCATION = {
    "latitude": -37.81742,
    "longitude": 144.96728,
    "altitude": 14.0,
    "accuracy": 10.0,
}
