package demo

/* Shapes with
   an area. */
sealed trait Shape
case class Circle(radius: Double) extends Shape

object Main {
  def area(shape: Shape): Double = shape match {
    case Circle(r) if r > 0 => 3.14 * r * r // enough digits
    case _ => 0x00
  }

  lazy val names = List("a \"b\"", "c").map(_.length)
  val quote = '\''

  @main def run(): Unit = for (n <- names) println(n)
}
