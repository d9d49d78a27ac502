"""The ten invented authors of the sample data, in the order they are written."""

# key, full name, recordings, places, followers, biography (None: the author wrote none)
AUTHORS = (
    ("mara", "Mara Ilievska", 348, 112, 15300,
     "Grew up above a bakery in Bitola and still wakes at four to hear a city before its people do. "
     "Records trams, bells and empty arcades, and never on the same corner twice."),
    ("tomasz", "Tomasz Wieczorek", 127, 41, 962,
     "Railway signaller by night, listener by day. He collects platforms: the chime, the brakes, the breath "
     "before the doors open."),
    ("imani", "Imani Achterberg", 2140, 683, 1240000,
     "Radio maker, born in Rotterdam and raised on her mother's Mombasa tapes. She has a soft spot for markets, "
     "crowds and anyone who sings while working. Bring headphones."),
    ("kenji", "Kenji Moriwaki", 76, 29, 418,
     "Studies acoustics in Parkville and carries two small microphones in his hood. Favourite reverb: "
     "any stairwell with tiles."),
    ("leila", "Leila Farahzad", 905, 240, 48200,
     "Poet and translator from Shiraz. Her recordings are short, patient and usually have water in them."),
    ("gus", "Gus Pemberhale", 1563, 377, 8740,
     "Retired piano tuner, sixty-one years in the same street in Carlton. He says every gate has a pitch, "
     "and he has written most of them down."),
    ("priya", "Priya Venkatanarayan", 214, 88, 2600000,
     "Sound designer for films you have probably cried at. On weekends she follows the birds through the gardens "
     "with a blimp on a broomstick. No music, no voice-over, just the place."),
    ("mateo", "Mateo Quirogalde", 59, 33, 1870,
     "Bicycle courier from Rosario who records what he passes at twenty kilometres an hour. Rain does not stop him; "
     "the rain is half of the collection."),
    ("linh", "Linh Truongvassi", 431, 156, 73100,
     None),
    ("birgit", "Birgit Aasmundsdatter", 18, 9, 204,
     "Came from Tromsø for one winter and stayed for the light. She is learning the summer sounds one at a time, "
     "crickets first."),
)
