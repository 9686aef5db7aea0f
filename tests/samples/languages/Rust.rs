//! Reads numbers.
use std::fs;

/* A pair of
   numbers. */
#[derive(Debug)]
pub struct Pair<'a> {
    name: &'a str,
    value: u64,
}

fn main() -> Result<(), String> {
    let mut total: u64 = 0xFF_u64; // grows
    for line in fs::read_to_string("in.txt").unwrap().lines() {
        match line.chars().next() {
            Some('#') | None => continue,
            Some(c) if c == '"' => println!("quote \"{}\"", c),
            _ => total += 1.5e3 as u64,
        }
    }
    Ok(())
}
unsafe extern "C" {
    safe fn tick();
}
gen fn count() {
    let at = &raw const LIMIT;
}
#[must_use]
fn pick<'de, T: Read<'de>>(from: &'de str) -> Box<T> { // a listed lifetime
    assert_ne!(from, "a"); debug_assert!(matches!(from, _)); include_str!("x"); todo(from)
}
fn other<'own>(from: &'own str) {} // another one
}
