# A machine and its disk.
terraform {
  required_version = ">= 1.5"
}

variable "size" {
  type    = number
  default = 10 // gigabytes
}

/* One for each
   name. */
resource "demo_disk" "main" {
  for_each = toset(["a", "b \"c\""])
  size     = var.size > 0 ? var.size : null
  shared   = true
}
