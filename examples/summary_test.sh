#!/bin/bash
# The demo's summary, made of what its programs say of small pictures: summary_test.sh PROGRAMS FOLDER MODEL
set -euo pipefail
programs=$1 folder=$2 model=$3
rm -rf "$folder"
mkdir -p "$folder"
"$programs/render_mesh" --size 40x30 --output "$folder/drawn.png" "$model" >"$folder/drawn.txt"
for job in curvature normals; do
    "$programs/mesh_shape" "$job" --size 20x20 --output "$folder/$job.png" "$model" >"$folder/$job.txt"
done
python3 -B "$(dirname "$0")/summary.py" "$folder" | tee "$folder/summary"

has() {
    grep -E -- "$1" "$folder/summary" >/dev/null || { echo "FAILED: no line is '$1'"; exit 1; }
}
has '11184 vertices centred, projected and lit, [0-9]+ triangles drawn$'
has 'korm [0-9]+ ns a vertex, [0-9.]+ of [0-9]+ ms'
has 'problems of one vertex each: least squares by QR$'
has 'korm [0-9]+ ns a problem, Eigen.s HouseholderQR [0-9]+$'
has 'problems of one vertex each: eigenvectors of a 3 by 3 matrix$'
has 'korm [0-9]+ ns a problem, Eigen.s iteration [0-9]+, Eigen.s closed form [0-9]+$'
for picture in drawn curvature normals; do has "^  $folder/$picture\.png$"; done
[[ $(wc -l <"$folder/summary") -le 24 ]] || { echo "FAILED: it is longer than a screen"; exit 1; }
if grep -vF .png "$folder/summary" | grep -E '.{81}'; then echo "FAILED: it is wider than a screen"; exit 1; fi
