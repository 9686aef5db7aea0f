import groovy.transform.Field

/* Tasks of
   a build. */
class Task implements Runnable {
    String name = 'none'

    @Override
    void run() {
        def limit = 10
        if (name in ["clean", 'test'] && limit > 1.5) {
            println "runs ${name}" // at once
        }
    }
}
assert new Task().name != null
