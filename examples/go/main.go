// Calls korm through the package that bind has written: inverts two matrices, and shows a failure.
package main

import (
	"fmt"
	"os"

	"example/korm"
)

func main() {
	matrices := [2][3][3]float64{{{2, 0, 0}, {0, 4, 0}, {0, 0, 8}}, {{1, 1, 0}, {0, 1, 0}, {0, 0, 1}}}
	var inverses [2][3][3]float64
	var buffer [12]float64
	invert := func() error {
		return korm.Invert_ma_64f(&matrices[0][0][0], 72, 24, 8, &buffer[0], &inverses[0][0][0], 72, 24, 8, 3, 2)
	}
	if err := invert(); err != nil {
		fmt.Println(err)
		os.Exit(1)
	}
	fmt.Println(inverses)
	matrices[1] = [3][3]float64{}
	fmt.Println(invert())
}
