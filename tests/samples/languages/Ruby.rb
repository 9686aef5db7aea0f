#!/usr/bin/env ruby
require 'json'

=begin
Reads a file
and keeps it.
=end
class Reader
  attr_reader :path

  def initialize(path, limit = 1_000)
    @path = path # as given
    raise ArgumentError, "no \"path\"" if path.nil?
  end

  def each
    return unless defined?(yield)
    lines.each do |line|
      yield line unless line == 'end'
    end
  end
end
