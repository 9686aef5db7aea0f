! Solves a small system.
module solver
    use, intrinsic :: iso_fortran_env
    implicit none
    integer, parameter :: n = 10
contains
    pure function norm(x) result(r)
        real, intent(in) :: x(n)
        real :: r
        r = sqrt(sum(x**2)) ! the usual one
        if (r > 1.5e3 .and. .not. r == 0.0) then
            r = 2.0_8
        end if
    end function norm
END MODULE solver

program main
    print *, "it's", 'a "norm"'
end program
submodule (solver) teams
    use, non_intrinsic :: shapes
contains
    simple subroutine spread(a, t)
        class(*), intent(inout) :: a(..)
        doubleprecision :: local
        change team (t)
            event post (ready)
            sync images (*)
            sync memory
        endteam
        select rank (a)
            rank default
                fail image
        end select
        open (1, form="unformatted")
    end subroutine
endsubmodule
