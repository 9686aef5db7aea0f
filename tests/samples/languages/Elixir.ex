# A counter in a process.
defmodule Counter do
  use GenServer

  @doc "Starts at the \"given\" number."
  def start(from \\ 0) do
    GenServer.start_link(__MODULE__, from)
  end

  def handle_call(:next, _from, n) when n < 0xFF do
    {:reply, n, n + 1} # one more
  end

  defp names(list), do: list |> Enum.map(fn x -> {x, 'a', 1.5} end)
  defp none?(x), do: x == nil or not true
end
