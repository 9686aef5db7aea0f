(* A tree of
   numbers. *)
type ('a) tree =
  | Leaf
  | Node of int * string

let rec sum tree = match tree with
  | [] -> 0
  | x :: rest when x > 0xFF -> x + sum rest
  | _ -> failwith "not \"that\""

let () =
  let quote = 'q' in
  for i = 1 to 10 do
    Printf.printf "%d %c\n" i quote
  done;
  if true then begin ignore 1.5 end
