module example

go 1.19
