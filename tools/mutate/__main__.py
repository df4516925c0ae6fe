"""Mutation testing: mutate BUILD [--seed N] [--tables N] [--generator N] [--entry N] [--kernels N] [--jobs N] [--only REGEX]

Draws mistakes at random, makes a library with each and runs the quick tests of what it touches. What was tried is kept in
BUILD/mutate/SEED.jsonl: a run that was stopped goes on where it was, also after sources have changed. Prints counts and what no
test noticed.
"""

import argparse
import hashlib
import json
import random
import re
import shutil
import subprocess
import sys
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from itertools import chain, islice, zip_longest
from pathlib import Path

from mutations import code_mutations, generator_mutations, named, table_mutations
from workshop import FORMS_IN_A_PIECE, NotBuilt, Workshop, run

ROOT = Path(__file__).resolve().parents[2]
GROUPS = ("tables", "generator", "entry", "kernels")
FAMILIES = ("arith", "products", "vectors", "move", "linalg", "eigen", "geometry", "kernel")
PIECES_TRIED = 6  # until one has other code


def files(group):
    if group == "tables":
        return sorted(ROOT.glob("src/*/forms.py"))
    if group == "generator":
        return [ROOT / "tools/formgen" / name for name in ("emit.py", "fixed.py", "grammar.py", "header.py")]
    if group == "entry":
        return [ROOT / "src/entry" / name for name in ("checks.h", "parallel.h", "parallel.cpp", "views.h", "version.cpp")]
    return sorted(file for family in FAMILIES for suffix in ("h", "cpp") for file in (ROOT / "src" / family).glob(f"*.{suffix}"))


MISTAKES = {"tables": table_mutations, "generator": generator_mutations, "entry": code_mutations, "kernels": code_mutations}


def drawn(group, number, seed):
    """Mistakes of a group by name: in turn one of each folder, so that no large folder has all of them. Chance follows from the
    name, so a changed source leaves the others' mistakes where they were."""
    places = {}
    for file in files(group):
        text = file.read_text()
        found = named(MISTAKES[group](str(file.relative_to(ROOT)), text), text)
        places.setdefault(file.parent.name if group == "kernels" else group, {}).update(found)
    for place, found in places.items():
        chance = {name: hashlib.sha256(f"{seed} {name}".encode()).digest() for name in found}
        places[place] = sorted(found.items(), key=lambda item: chance[item[0]])
    print(f"{group}: {sum(map(len, places.values()))} mistakes to draw from", file=sys.stderr)
    rounds = zip_longest(*(places[place] for place in sorted(places)))
    return list(islice(filter(None, chain.from_iterable(rounds)), number))


def try_code(shop, mutation, folder):
    """A mistake in a header or source: pieces of sources that include it, until one has other code."""
    text = (ROOT / mutation.file).read_text()
    overlay = folder / "overlay"
    inside = Path(mutation.file).relative_to("src")
    (overlay / inside).parent.mkdir(parents=True, exist_ok=True)
    (overlay / inside).write_text(mutation.applied(text))
    family = inside.parts[0]
    chance = random.Random(f"{shop.seed} {family}")  # the same pieces for all of a family: each is compiled once without a mistake
    if mutation.file.endswith(".cpp"):
        return shop.tried(f"../../{mutation.file}", shop.forms_of(family, 20), mutation.applied(text), folder,
                          right_text=text, overlay=overlay, family=family)
    function = mutation.function(text)
    pieces = []
    for source in shop.users.get(mutation.file, []):
        likely = shop.mentions(source, function, mutation.file), shop.family_of(source) == family
        for names in shop.pieces_of(source)[:2]:
            pieces.append((not likely[0], not likely[1], chance.random(), source, names))
    result = ("equal", "")
    for *_, source, names in spread(sorted(pieces))[:PIECES_TRIED]:
        piece = shop.piece_text((shop.build / source).read_text(), names)
        verdict = shop.tried(source, names, piece, folder, overlay=overlay)
        if verdict[0] == "survived":  # perhaps other forms, or tests that take longer, tell
            names += shop.others(source, names)
            piece = shop.piece_text((shop.build / source).read_text(), names)
            verdict = shop.tried(source, names, piece, folder, overlay=overlay, family=family)
        if verdict[0] == "killed":
            return verdict
        if verdict[0] == "survived":
            result = verdict
    return result


def spread(pieces):
    """One piece of each source first."""
    seen, first, rest = set(), [], []
    for piece in pieces:
        (rest if piece[3] in seen else first).append(piece)
        seen.add(piece[3])
    return first + rest


def generated(mutation, folder):
    """What the generator makes after the mistake, and the tree where it was made."""
    tree = folder / "tree"
    tree.mkdir(parents=True)
    for path in ROOT.iterdir():  # the generator finds its tables from where it lies itself
        if path.name in ("src", "tools"):
            shutil.copytree(path, tree / path.name, ignore=shutil.ignore_patterns("*.cpp", "__pycache__"))
        elif path.name not in ("build", ".git"):
            (tree / path.name).symlink_to(path)
    (tree / mutation.file).write_text(mutation.applied((ROOT / mutation.file).read_text()))
    if run([sys.executable, "-B", "tools/formgen", "generate", str(folder / "generated")], cwd=tree).returncode:
        raise NotBuilt
    return tree, folder / "generated"


def changed_files(shop, made):
    names = sorted(file.relative_to(made) for file in made.rglob("*") if file.is_file())
    return [name for name in names
            if not (shop.generated / name).exists() or (made / name).read_bytes() != (shop.generated / name).read_bytes()]


def try_table(shop, mutation, folder):
    """A mistake in a table: the sources that it changes, and of those the forms that changed."""
    _, made = generated(mutation, folder)
    return try_forms(shop, mutation, folder, made, changed_files(shop, made), Path(mutation.file).parts[1], sources=2)


def try_generator(shop, mutation, folder):
    """A mistake in the generator: its own tests, those of the pages and of the description, then forms whose text changed."""
    tree, made = generated(mutation, folder)
    changed = changed_files(shop, made)
    check = run([sys.executable, "-B", "tools/formgen", "check"], cwd=tree)
    if check.returncode:
        return "killed", "committed_files_match_the_tables"
    if not changed:
        return "equal", ""
    for test, arguments in (("formgen", []), ("description", [str(made / "korm.json")]), ("manual", [str(made / "man")])):
        done = run([sys.executable, "-B", f"tools/formgen/test_{test}.py", *arguments], cwd=tree)
        if done.returncode:
            return "killed", f"test_{test}.py"
    if not any(name.suffix == ".cpp" for name in changed):
        return "survived", f"changed: {', '.join(map(str, changed[:3]))}"
    return try_forms(shop, mutation, folder, made, changed, None, sources=6)


def try_forms(shop, mutation, folder, made, changed, family, sources):
    """Of some of the sources that changed some of the forms that did."""
    result = ("equal", "")
    changed = [name for name in changed if name.suffix == ".cpp"]
    random.Random(f"{shop.seed} {mutation.start}").shuffle(changed)
    for name in changed[:sources]:
        source = f"generated/{name}"
        before, after = (shop.build / source).read_text(), (made / name).read_text()
        old, new = shop.sections(before)[1], shop.sections(after)[1]
        if set(old) != set(new):
            return "killed", "exports differ"
        names = [form for form in old if old[form] != new[form]] or list(old)  # all if what they share has changed
        random.Random(mutation.start).shuffle(names)
        pieces = names[:FORMS_IN_A_PIECE], names[FORMS_IN_A_PIECE : 5 * FORMS_IN_A_PIECE]
        for tried in [piece for piece in pieces if piece] or [()]:
            verdict = shop.tried(source, tuple(tried), shop.piece_text(after, tried), folder,
                                 right_text=shop.piece_text(before, tried), family=family or shop.family_of(source))
            if verdict[0] == "killed":
                return verdict
            if verdict[0] == "survived":
                result = verdict
    return result


def main():
    parser = argparse.ArgumentParser(prog="mutate", description=__doc__.splitlines()[0])
    parser.add_argument("build", type=Path)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", help="mistakes whose description has this regular expression")
    for group in GROUPS:
        parser.add_argument(f"--{group}", type=int, default=0)
    given = parser.parse_args()
    build = given.build.resolve()
    scratch = build / "mutate" / str(given.seed)
    shop = Workshop(ROOT, build, scratch, given.seed)
    log = scratch.with_suffix(".jsonl")
    done = {}
    if log.exists():
        done = {one["name"]: one for one in map(json.loads, log.read_text().splitlines())}
    work, names = [], set()
    for group in GROUPS:
        mutations = drawn(group, getattr(given, group), given.seed)
        for place, (name, mutation) in enumerate(mutations):
            told = mutation.told((ROOT / mutation.file).read_text())
            names.add(name)
            if name not in done and re.search(given.only, told):
                work.append((place / len(mutations), group, name, mutation, told))
    work.sort(key=lambda item: item[0])  # a run that is stopped has tried the same share of each group, and is a smaller draw

    def attempt(item):
        number, (_, group, name, mutation, told) = item
        folder = scratch / f"try{number}"
        shutil.rmtree(folder, ignore_errors=True)  # of a run that was stopped
        try:
            verdict, by = {"tables": try_table, "generator": try_generator}.get(group, try_code)(shop, mutation, folder)
        except NotBuilt:
            verdict, by = "not built", ""
        except (RuntimeError, subprocess.SubprocessError) as error:
            verdict, by = "failed", str(error)
        shutil.rmtree(folder, ignore_errors=True)
        one = {"group": group, "name": name, "mistake": told, "verdict": verdict, "by": by}
        with shop.lock, log.open("a") as out:
            print(json.dumps(one), file=out)
        print(f"{verdict}: {told} {by}", file=sys.stderr, flush=True)
        return one

    with ThreadPoolExecutor(given.jobs) as pool:
        for one in pool.map(attempt, enumerate(work)):
            done[one["name"]] = one
    report([one for name, one in done.items() if name in names])


def report(tried):
    counts = Counter((one["group"], one["verdict"]) for one in tried)
    for group in sorted({one["group"] for one in tried}):
        told = {verdict: counts[group, verdict] for verdict in ("killed", "survived", "equal", "not built", "failed")}
        judged = told["killed"] + told["survived"]
        share = 100 * told["killed"] / judged if judged else 0
        print(f"{group}: {share:.1f} % of {judged} noticed;", ", ".join(f"{name} {number}" for name, number in told.items()))
    for one in tried:
        if one["verdict"] in ("survived", "failed"):
            print(f"{one['verdict']}: {one['mistake']} {one['by']}")


if __name__ == "__main__":
    main()
