"""The ten authors' portraits: what each face is made of. Colours are #rrggbb, lengths are user units of 400."""

RECIPES = {
    "mara": dict(
        skin="#f2c7a5", hair="#8a4526", eye="#5f7d46", lip="#c6505a", cloth="#2d6c8c", ground="#f4a77e", motif="rings",
        style="waves", collar="crew", mouth="laugh", lashes=True, earrings="#f3c34b", freckles=True, tilt=-4,
        cheek=75, jaw=52, chin=288),
    "tomasz": dict(
        skin="#e6b690", hair="#3b291e", eye="#42658f", cloth="#f07f2e", ground="#63a39b", motif="bars",
        style="swept", collar="vest", mouth="smile", beard="full", blush=0.15, brow=7.5, tilt=2,
        cheek=77, jaw=62, chin=292),
    "imani": dict(
        skin="#8f5b3c", hair="#2a1b15", eye="#3f2716", lip="#a33d4b", cloth="#f2b632", ground="#7d70c9", motif="rings",
        style="curls", collar="crew", mouth="laugh", lashes=True, phones="#f6f3ee", blush=0.2, tilt=4, zoom=1.08,
        cheek=76, jaw=54, chin=288),
    "kenji": dict(
        skin="#efcaa2", hair="#221f24", eye="#33251e", cloth="#3d4a60", ground="#ecc659", motif="waves",
        style="crop", collar="hood", mouth="smile", glasses="round", blush=0.22, tilt=-2,
        cheek=77, jaw=55, chin=286),
    "leila": dict(
        skin="#dcaa7d", hair="#2a1c18", eye="#55351f", lip="#b5505a", cloth="#234f6b", ground="#e58fa0", motif="dots",
        style="scarf", scarf="#2b9388", collar="none", mouth="smile", lashes=True, blush=0.28, tilt=3,
        cheek=74, jaw=50, chin=286),
    "gus": dict(
        skin="#f4cfb6", hair="#d3d0cc", eye="#5a83a0", cloth="#51663f", ground="#8fb9de", motif="bars",
        style="sides", collar="bowtie", mouth="smile", beard="moustache", glasses="square", blush=0.38, lines=True,
        brow=9, tilt=-3, cheek=78, jaw=63, chin=292),
    "priya": dict(
        skin="#bd845a", hair="#231713", eye="#3a241a", lip="#a83c4a", cloth="#9a3f83", ground="#84bf93", motif="dots",
        style="braid", collar="embroidered", mouth="laugh", lashes=True, earrings="#f0c04a", stud=True, tilt=-3,
        cheek=73, jaw=50, chin=288),
    "mateo": dict(
        skin="#dba87e", hair="#4b2d1d", eye="#5b4526", cloth="#2f79b5", ground="#f08a63", motif="waves",
        style="cap", cap="#f5efe2", trim="#e23f58", collar="strap", mouth="laugh", beard="stubble", blush=0.2, brow=7,
        tilt=4, cheek=75, jaw=58, chin=290),
    "linh": dict(
        skin="#f3d2ad", hair="#1d1b22", eye="#34251f", lip="#d14f60", cloth="#f1ebdf", ground="#4f8fc0", motif="rings",
        style="bob", collar="shirt", mouth="smile", lashes=True, blush=0.3, tilt=-2,
        cheek=75, jaw=50, chin=284),
    "birgit": dict(
        skin="#f8d8c4", hair="#e3d5b8", eye="#4f8db3", lip="#c65f62", cloth="#3b4b78", ground="#a5b4e0", motif="dots",
        style="beanie", cap="#d8433f", collar="knit", scarf="#f3e6cf", mouth="laugh", lashes=True, blush=0.5,
        lines=True, tilt=3, zoom=1.02, cheek=76, jaw=56, chin=287),
}
