import 'dart:io';

/* A queue of
   names. */
class Names extends Object {
  final List<String> items = [];
  static const int limit = 0x10;

  Future<void> add(String name) async {
    if (items.length >= limit) return; // full
    items.add(await clean("$name \"x\""));
  }

  @override
  String toString() => items.isEmpty ? 'none' : '${items.length}';
}
