;;; Lists and what they hold.
#| Nothing here
   is compiled. |#
(defpackage :demo (:use :cl))
(in-package :demo)

(defun total (items &optional (start 0))
  "The sum of the \"items\"."
  (let ((sum start))
    (dolist (item items sum)
      (when (and item (not (equal item 1.5)))
        (incf sum item)))))  ; one each

(DEFVAR *limit* 10)
(cond ((null nil) (format t "none~%")))
