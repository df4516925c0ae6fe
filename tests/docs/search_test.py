#!/usr/bin/env python3
"""Searches the site in a browser without a window: search_test.py HTML

The page is the site's first, with a few words typed into its search box. The results are read from the page; a picture of
it is left as search.png beside the folder of the site.
"""

from pathlib import Path
import shutil
import subprocess
import sys

BROWSERS = ("chromium-headless-shell", "chromium", "chromium-browser", "google-chrome")
SKIPPED = 77
TYPED = "kormInvert_ma"
FOUND = ("kormInvert_ma_32f", "kormInvert_ma_64f_P")
LIKE_A_PNG = 20_000  # bytes that a picture of an empty page doesn't have

# Doxygen shows what it found in a frame of the page.
SCRIPT = """<script>window.addEventListener('load', () => setTimeout(() => {
  const field = document.getElementById('MSearchField');
  searchBox.OnSearchFieldFocus(true);
  field.value = '%s';
  searchBox.OnSearchFieldChange({keyCode: 0});
  setTimeout(() => {
    const frame = document.getElementById('MSearchResults');
    const shown = [...(frame.contentDocument || document).querySelectorAll('.SRResult')].filter(
      result => result.style.display == 'block' || getComputedStyle(result).display != 'none');
    document.body.setAttribute('data-found', shown.map(result => result.textContent).join(' '));
  }, 1500);
}, 500));</script>"""


def browse(browser, page, *options):
    command = [browser, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", "--allow-file-access-from-files",
               "--window-size=1280,900", "--virtual-time-budget=6000", *options, page.as_uri()]
    return subprocess.run(command, capture_output=True, text=True, timeout=120, check=False)


def main():
    site = Path(sys.argv[1]).resolve()
    browser = next(filter(None, map(shutil.which, BROWSERS)), None)
    if not browser:
        print("skipped: there is no browser here (Debian: chromium-headless-shell)")
        return SKIPPED
    page = site / "search-in-use.html"
    page.write_text((site / "index.html").read_text().replace("</body>", SCRIPT % TYPED + "</body>"))
    picture = site.parent / "search.png"
    picture.unlink(missing_ok=True)
    try:
        shown = browse(browser, page, "--dump-dom").stdout.partition('data-found="')[2].partition('"')[0]
        browse(browser, page, f"--screenshot={picture}")
    finally:
        page.unlink()
    missing = [name for name in FOUND if name not in shown]
    if missing or not picture.exists() or picture.stat().st_size < LIKE_A_PNG:
        print(f"'{TYPED}' typed; not shown: {missing}; shown: {shown[:400]!r}; picture: {picture.exists()}")
        return 1
    print(f"'{TYPED}' typed: {' '.join(FOUND)} and others are shown; picture: {picture}, {picture.stat().st_size} bytes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
