"""The version query: the one export that is no form of the grammar so far."""

from grammar import Query

GROUPS = {
    "version": """Version query
The one function outside the naming scheme. It cannot fail and may be called at any time.
""",
}

FAMILIES = [
    Query(
        name="kormGetLibVersion",
        returns="const kormLibVersion *",
        group="version",
        brief="The version record of the library.",
        source="entry/version.cpp",
    ),
]
