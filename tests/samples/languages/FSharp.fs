module Demo

(* Shapes with
   an area. *)
type Shape =
    | Circle of radius: float
    | Square of float

let map (items: List<'T>) = items

// The area of one.
let rec area shape =
    match shape with
    | Circle r when r > 0.5 -> 3.14 * r * r
    | Square s -> s * s
    | _ -> failwith "no \"area\""

let mutable total = 0x1F
if not true then printfn "%c" 'x' else ()
#nowarn "40"
#time "on"
let const = 7 land 3 lor 1 lsl 2 mod 5
let product = fun a b -> ( * ) a b // not (*)
