// Writes a Go package for korm from korm.json: bind KORM.JSON > korm.go
//
// Each function becomes one of Go with the types and the order of its arguments; pointers to elements are *float32 or *float64,
// lists and tables unsafe.Pointer. A status other than Ok becomes an error. Nothing else than the description is read.
package main

import (
	"encoding/json"
	"fmt"
	"os"
	"strings"
)

type description struct {
	Version  string
	Statuses []struct {
		Name, Meaning string
		Value         int
	}
	Functions []struct {
		Name, Formula, Returns string
		Arguments              []struct{ Name, Type string }
	}
}

// The type in Go of a type in C, and how a value of it is passed on.
func goType(c string) (name, pass string) {
	plain := strings.TrimSpace(strings.TrimPrefix(c, "const "))
	switch plain {
	case "int32_t":
		return "int32", "C.int32_t(%s)"
	case "float":
		return "float32", "C.float(%s)"
	case "double":
		return "float64", "C.double(%s)"
	case "float *":
		return "*float32", "(*C.float)(%s)"
	case "double *":
		return "*float64", "(*C.double)(%s)"
	case "int32_t *":
		return "*int32", "(*C.int32_t)(%s)"
	case "uint32_t *":
		return "*uint32", "(*C.uint32_t)(%s)"
	}
	element := strings.Fields(plain)[0]
	return "unsafe.Pointer", "(**C." + element + ")(%s)"
}

func main() {
	text, err := os.ReadFile(os.Args[1])
	if err != nil {
		panic(err)
	}
	var korm description
	if err := json.Unmarshal(text, &korm); err != nil {
		panic(err)
	}
	fmt.Printf("// Package korm was written from the description of korm %s.\npackage korm\n\n", korm.Version)
	fmt.Print("// #cgo LDFLAGS: -lkorm\n// #include <korm.h>\nimport \"C\"\n\nimport \"unsafe\"\n\nvar _ unsafe.Pointer\n\n")
	fmt.Print("// Status is what a function found.\ntype Status int32\n\n")
	fmt.Print("func (status Status) Error() string {\n\tswitch status {\n")
	for _, status := range korm.Statuses {
		fmt.Printf("\tcase %d:\n\t\treturn %q\n", status.Value, status.Meaning)
	}
	fmt.Print("\t}\n\treturn \"unknown\"\n}\n\nfunc check(status C.int32_t) error {\n\tif status == 0 {\n\t\treturn nil\n\t}\n\treturn Status(status)\n}\n")
	for _, function := range korm.Functions {
		if function.Returns != "status" {
			continue
		}
		var takes, passes []string
		for _, argument := range function.Arguments {
			kind, pass := goType(argument.Type)
			name := "_" + argument.Name // some names are words of the language
			takes = append(takes, name+" "+kind)
			passes = append(passes, fmt.Sprintf(pass, name))
		}
		name := strings.TrimPrefix(function.Name, "korm")
		fmt.Printf("\n// %s computes: %s\nfunc %s(%s) error {\n\treturn check(C.%s(%s))\n}\n", name, strings.ReplaceAll(function.Formula, "\n", " "),
			name, strings.Join(takes, ", "), function.Name, strings.Join(passes, ", "))
	}
}
