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
print join("\n", sort keys %seen), "\n" if $#ARGV > 0x1F;
for my $i (0 .. $#list) { push @{$to}, $#{$i} + $#$to; } # the last index
try { flock $in, 2; } catch ($e) { local $x = qx(ls); } finally { shutdown $s, fc 'A'; }
my $n = $#other; # no name of the list
mkdir $to or die; opendir my $d, $to; my @all = readdir $d; closedir $d;
binmode STDOUT; printf "%o", hex(shift) + sqrt(2) + rand time; unlink $to; system "true";
