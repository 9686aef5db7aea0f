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
(handler-case (multiple-value-setq (a b) (gethash k table))
  (error (e) (decf n) (signal e)))
(destructuring-bind (first &rest others) list (check-type first symbol) (rotatef a b))
(defgroup demo nil "A \"group\"") (when-let ((x (pcase y))) (save-excursion x)) ; Emacs
