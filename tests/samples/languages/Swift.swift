import Foundation

/* A counter that
   can be watched. */
@main
final class Counter: Codable {
    private(set) var count = 0x0F
    weak var owner: AnyObject?

    func add(_ step: Int = 1) async throws -> Int {
        guard step > 0 else { throw Failure.negative } // no way back
        if let owner { print("owner \"\(owner)\"") }
        #if DEBUG
        defer { count += step }
        #endif
        return count
    }
}
macro stringify() = #externalMacro(module: "M", type: "S")
@MainActor distributed actor Clock { @IBOutlet weak var face: Any? }
func log(_ at: StaticString = #fileID, column: Int = #column, run: @autoclosure () -> Any.Type) {} // where
let path = #keyPath(Clock.face), p = Clock.Protocol, q = unsafe read()
