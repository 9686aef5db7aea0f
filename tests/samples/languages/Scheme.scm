; A counter made of a closure.
#| The state is
   a variable. |#
(define (make-counter start)
  (let ((n start))
    (lambda (step)
      (if (eq? step #f)
          n
          (begin (set! n (+ n step 1))  ; counts
                 n)))))

(define-syntax twice
  (syntax-rules () ((_ x) (begin x x))))
(display "a \"count\"\n")
(cond ((null? (list 1 2.5)) #t) (else (car (quote (a b)))))
(import (only (rename (srfi 1) (iota count)) count))
(for-each (lambda (x) (if (symbol? x) (assert (string? x)) x)) (list 1)) ; each
(cond-expand (full (begin0 1 `(a ,@(list 2)))) (else (quote (unquote-splicing x))))
