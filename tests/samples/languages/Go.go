package main

import "fmt"

/* A stack
   of numbers. */
type Stack struct {
	items []int
}

func (s *Stack) Push(n int) {
	s.items = append(s.items, n) // grows
}

func main() {
	s := &Stack{}
	for i := 0; i < 0x10; i++ {
		go s.Push(i)
	}
	defer fmt.Println("done\n", '\'', nil == true)
}
