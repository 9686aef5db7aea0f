#!/usr/bin/perl
use strict;

=head1 NAME

count - counts words

=cut

my %seen;
foreach my $file (@ARGV) {
    next unless -e $file;    # only what is there
    open my $in, '<', $file or die "cannot read \"$file\": $!";
    while (<$in>) {
        $seen{lc $_}++;
    }
    close $in;
}
print join("\n", sort keys %seen), "\n" if $# > 0x1F;
mkdir $to or die; opendir my $d, $to; my @all = readdir $d; closedir $d;
binmode STDOUT; printf "%o", hex(shift) + sqrt(2) + rand time; unlink $to; system "true";
