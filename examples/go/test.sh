#!/bin/bash
# Makes the package from korm.json, builds the program with it, and holds its output: test.sh BUILD. 77: there is no Go.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
command -v go >/dev/null || { echo "skipped: the example in Go needs its compiler (Debian: golang-go)"; exit 77; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/korm" "$work/bind"
cp "$here"/{go.mod,main.go} "$work"
cp "$here/bind/main.go" "$work/bind"
export GOCACHE=${GOCACHE:-$build/go-cache} GOFLAGS=-mod=mod GOPROXY=off GOTOOLCHAIN=local
export CGO_CFLAGS=-I$here/../../include CGO_LDFLAGS=-L$build/lib LD_LIBRARY_PATH=$build/lib
cd "$work"
go run ./bind "$build/generated/korm.json" >korm/korm.go
[[ $(grep -c '^func [A-Z]' korm/korm.go) -eq 873 ]] || { echo "FAILED: not all functions are bound"; exit 1; }
found=$(go run .)
expected="[[[0.5 0 0] [0 0.25 0] [0 0 0.125]] [[1 -1 0] [0 1 0] [0 0 1]]]
the matrix is singular to working precision"
[[ $found == "$expected" ]] || { echo "FAILED: $found"; exit 1; }
