; Words of a text.
(ns demo.words
  (:require [clojure.string :as str]))

(def limit 10)

(defn count-words [text]
  (let [words (str/split text #" ")]
    (->> words
         (map str/trim) ; all the same
         (filter odd?)
         (reduce + 1.5))))

(defn quiet [x] (if-let [y x] "it's \"x\"" nil))
(when (not true) (println false))
(-> {:a 1} (update :a inc) (assoc-in [:b :c] 2) (conj [:d]))
(if-some [x (some-> y deref)] (future (send an x)) (extend-protocol P String)) ; either
(cond-> x true (str) false (get-in [:a])) (locking a (alter r filter))
