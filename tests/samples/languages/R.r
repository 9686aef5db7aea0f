# Means by group.
means <- function(data, digits = 2L) {
    if (is.null(data)) return(NULL)
    for (name in names(data)) {
        x <- data[[name]]  # one column
        x[x == "it's"] <- NA
        if (mean(x, na.rm = TRUE) > 1.5e3) next
        print(round(x, digits))
    }
    7 %/% 2
    name %in% c('a', "b \"c\"")
}
