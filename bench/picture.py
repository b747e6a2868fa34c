"""The ratios as a picture: a bar for each, the goals as marks."""

import matplotlib

matplotlib.use("svg")
from matplotlib import pyplot  # noqa: E402  the backend comes first

MET, MISSED, FREE = "#2a7f62", "#b3412f", "#7a8794"


def colour(row):
    if row["met"] is None:
        return FREE
    return MET if row["met"] else MISSED


def draw(rows, file):
    """Writes the rows to an SVG file; the axis is logarithmic, since ratios are."""
    pyplot.rcParams.update({"svg.hashsalt": "bench", "svg.fonttype": "none"})
    figure, axes = pyplot.subplots(figsize=(11, 0.34 * len(rows) + 1))
    places = range(len(rows))
    axes.barh(places, [row["ratio"] for row in rows], color=[colour(row) for row in rows])
    for place, row in zip(places, rows):
        goal = row["at_most"] or row["at_least"]
        if goal:
            axes.plot([goal, goal], [place - 0.45, place + 0.45], color="black", linewidth=2)
        axes.annotate(f" {row['ratio']:.2f}", (row["ratio"], place), va="center", fontsize=8)
    axes.set_xscale("log")
    axes.axvline(1, color="#c0c0c0", linewidth=1, zorder=0)
    axes.set_yticks(places, [row["what"] for row in rows], fontsize=8)
    axes.invert_yaxis()
    axes.set_xlabel("ratio; a black mark is the goal; green meets it, red misses it, grey has none")
    for side in ("top", "right"):
        axes.spines[side].set_visible(False)
    figure.savefig(file, bbox_inches="tight", metadata={"Date": None})
